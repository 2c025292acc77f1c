#include "ZORSysValue.h"

#include <algorithm>
#include <array>
#include <numbers>

namespace {

struct UnitRow
{
    ZORSysValue::Unit unit;
    ZORSysValue::Magnitude magnitude;
    const char* label;
    double factor;
};

constexpr std::array<UnitRow, 7> kUnits = {{
    {ZORSysValue::Millimeter, ZORSysValue::Length, "mm", 1.0},
    {ZORSysValue::Centimeter, ZORSysValue::Length, "cm", 10.0},
    {ZORSysValue::Meter, ZORSysValue::Length, "m", 1000.0},
    {ZORSysValue::Inch, ZORSysValue::Length, "in", 25.4},
    {ZORSysValue::Foot, ZORSysValue::Length, "ft", 304.8},
    {ZORSysValue::Radian, ZORSysValue::Angle, "rad", 1.0},
    {ZORSysValue::Degree, ZORSysValue::Angle, "deg", std::numbers::pi / 180.0},
}};

const UnitRow* FindUnit(ZORSysValue::Unit unit)
{
    const auto* row =
        std::find_if(kUnits.begin(), kUnits.end(), [unit](const UnitRow& u) { return u.unit == unit; });
    return row == kUnits.end() ? nullptr : row;
}

} // namespace

QList<ZORSysValue::Unit> ZORSysValue::GetMagnitudeUnits(Magnitude magnitude)
{
    QList<Unit> result;
    for (const UnitRow& row : kUnits) {
        if (row.magnitude == magnitude)
            result.append(row.unit);
    }
    return result;
}

QString ZORSysValue::GetUnitLabel(Unit unit)
{
    const UnitRow* row = FindUnit(unit);
    return row ? QString::fromLatin1(row->label) : QString();
}

ZORSysValue::Unit ZORSysValue::GetUnitFromLabel(const QString& label)
{
    const auto* row = std::find_if(kUnits.begin(), kUnits.end(),
                                   [&label](const UnitRow& u) { return label == QLatin1String(u.label); });
    return row == kUnits.end() ? Millimeter : row->unit;
}

double ZORSysValue::GetUnitFactor(Unit unit)
{
    const UnitRow* row = FindUnit(unit);
    return row ? row->factor : 1.0;
}
