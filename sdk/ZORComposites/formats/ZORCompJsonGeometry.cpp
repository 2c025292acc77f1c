#include "ZORCompJsonGeometry_p.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORSystem/ZORSysException.h>

namespace {

using Fields = ZORCompJsonFields;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompJsonFormat)
};

double TakeRequired(Fields& fields, const QString& name)
{
    const std::optional<double> number = fields.TakeNumber(name);
    if (!number)
        Fields::Fail(fields.PathOf(name), Texts::tr("this is no number"));
    return *number;
}

ZORMathPoint TakeCoordinates(Fields& fields)
{
    const double x = TakeRequired(fields, QStringLiteral("x"));
    const double y = TakeRequired(fields, QStringLiteral("y"));
    return {x, y, TakeRequired(fields, QStringLiteral("z"))};
}

// What a point says besides its coordinates and what all points say.
QJsonObject GetExtra(const Fields& point)
{
    QJsonObject extra = point.GetRest();
    for (auto it = extra.begin(); it != extra.end();) {
        const bool isUsual =
            it.value().isNull() || (it.key() == QLatin1String("active") && it.value() == QJsonValue(true))
            || (it.key() == QLatin1String("_serialized_type") && point.GetType() == QLatin1String("Point"));
        it = isUsual ? extra.erase(it) : std::next(it);
    }
    return extra;
}

std::optional<ZORMathPoint> TakePoint(Fields& fields, const QString& name)
{
    if (!fields.Get(name).isObject())
        return std::nullopt;
    const QString path = fields.PathOf(name);
    Fields point(fields.Take(name), path);
    return TakeCoordinates(point);
}

std::optional<ZORMathVector> TakeVector(Fields& fields, const QString& prefix)
{
    const QString x = prefix + QLatin1Char('x');
    const QString y = prefix + QLatin1Char('y');
    const QString z = prefix + QLatin1Char('z');
    if (!fields.Has(x) || !fields.Has(y) || !fields.Has(z))
        return std::nullopt;
    const double first = TakeRequired(fields, x);
    const double second = TakeRequired(fields, y);
    return ZORMathVector(first, second, TakeRequired(fields, z));
}

std::optional<ZORMathVector> TakeAxis(Fields& fields, const QString& vector, const QString& point,
                                      const ZORMathPoint& origin)
{
    if (const std::optional<ZORMathVector> axis = TakeVector(fields, vector))
        return axis;
    const std::optional<ZORMathPoint> tip = TakePoint(fields, point);
    return tip ? std::optional(*tip - origin) : std::nullopt;
}

} // namespace

QString ZorCompPathOf(const QString& list, int index)
{
    return QStringLiteral("%1[%2]").arg(list, QString::number(index));
}

ZORMathSetOfPoints ZorCompTakePoints(ZORCompJsonFields& fields)
{
    const QString name = QStringLiteral("points");
    const QJsonArray values = fields.TakeArray(name);
    ZORMathSetOfPoints points;
    QJsonArray extras;
    for (int i = 0; i < values.size(); ++i) {
        Fields point(values.at(i), ZorCompPathOf(fields.PathOf(name), i));
        points.append(TakeCoordinates(point));
        QJsonObject extra = GetExtra(point);
        if (extra.isEmpty())
            continue;
        extra.insert(QStringLiteral("position"), i);
        extras.append(extra);
    }
    if (!extras.isEmpty())
        fields.Keep(name, extras);
    return points;
}

bool ZorCompTakeAxes(ZORCompJsonFields& fields, ZORCompDocument::Rosette& rosette)
{
    Fields rest = fields;
    std::optional<ZORMathPoint> origin = TakePoint(rest, QStringLiteral("o_pt"));
    if (!origin)
        origin = TakePoint(rest, QStringLiteral("pt"));
    if (!origin)
        return false;
    const std::optional<ZORMathVector> x =
        TakeAxis(rest, QStringLiteral("v1"), QStringLiteral("x_pt"), *origin);
    const std::optional<ZORMathVector> y =
        TakeAxis(rest, QStringLiteral("v2"), QStringLiteral("y_pt"), *origin);
    if (!x || !y)
        return false;
    const ZORMathVector normal = Cross(x->GetNormalized(), y->GetNormalized());
    try {
        ZORCompRosette(nullptr, *origin, *x, normal);
    } catch (const ZORSysException&) {
        return false;
    }
    rosette.origin = *origin;
    rosette.xAxis = *x;
    rosette.normal = normal;
    fields = rest;
    return true;
}
