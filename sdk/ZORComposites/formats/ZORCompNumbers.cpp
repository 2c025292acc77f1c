#include "ZORCompNumbers_p.h"

#include <QLocale>

#include <cmath>
#include <limits>

std::optional<double> ZorCompParseNumber(QStringView text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

QString ZorCompFormatNumber(double number)
{
    if (number == 0)
        return std::signbit(number) ? QStringLiteral("-0") : QStringLiteral("0");
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

std::optional<double> ZorCompParseAngle(QStringView text)
{
    constexpr QLatin1String kUnit("rad");
    const QStringView trimmed = text.trimmed();
    if (trimmed.endsWith(kUnit))
        return ZorCompParseNumber(trimmed.chopped(kUnit.size()));
    const std::optional<double> degrees = ZorCompParseNumber(trimmed);
    return degrees ? std::optional(ZorCompToRadians(*degrees)) : std::nullopt;
}

QString ZorCompFormatAngle(double radians)
{
    const double degrees = radians / (std::numbers::pi / 180);
    if (degrees == 0)
        return ZorCompFormatNumber(degrees);
    // People give few digits: those are tried first.
    const QString rounded = QString::number(degrees, 'g', 12);
    if (ZorCompParseAngle(rounded) == radians)
        return rounded;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double candidate :
         {degrees, std::nextafter(degrees, kInfinity), std::nextafter(degrees, -kInfinity)}) {
        if (ZorCompToRadians(candidate) == radians)
            return ZorCompFormatNumber(candidate);
    }
    return ZorCompFormatNumber(radians) + QStringLiteral(" rad");
}
