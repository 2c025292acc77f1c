// Tests of ZORSysValue.

#include "support/Printers.h"

#include <ZORSystem/ZORSysValue.h>

#include <gtest/gtest.h>

namespace {

TEST(ZORSysValueTest, LengthUnitsStartWithCodeZero)
{
    const QList<ZORSysValue::Unit> units = ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length);
    QStringList labels;
    for (const ZORSysValue::Unit unit : units)
        labels.append(ZORSysValue::GetUnitLabel(unit));
    EXPECT_EQ(QStringList({"mm", "cm", "m", "in", "ft"}), labels);
    EXPECT_EQ(0, int(units.constFirst()));
    EXPECT_EQ(1, int(ZORSysValue::Length));
}

TEST(ZORSysValueTest, LabelsLeadBackToTheirUnits)
{
    for (const auto magnitude : {ZORSysValue::Length, ZORSysValue::Angle}) {
        for (const ZORSysValue::Unit unit : ZORSysValue::GetMagnitudeUnits(magnitude))
            EXPECT_EQ(unit, ZORSysValue::GetUnitFromLabel(ZORSysValue::GetUnitLabel(unit)));
    }
    EXPECT_EQ(ZORSysValue::Millimeter, ZORSysValue::GetUnitFromLabel("furlong"));
    EXPECT_EQ(304.8, ZORSysValue::GetUnitFactor(ZORSysValue::Foot));
}

TEST(ZORSysValueTest, EveryUnitHasItsCodeLabelAndFactor)
{
    struct Row
    {
        int code;
        ZORSysValue::Unit unit;
        QString label;
        double factor;
    };
    const Row rows[] = {
        {0, ZORSysValue::Millimeter, "mm", 1},
        {1, ZORSysValue::Centimeter, "cm", 10},
        {2, ZORSysValue::Meter, "m", 1000},
        {3, ZORSysValue::Inch, "in", 25.4},
        {4, ZORSysValue::Foot, "ft", 304.8},
        {5, ZORSysValue::Radian, "rad", 1},
        {6, ZORSysValue::Degree, "deg", 0.017453292519943295},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.code, int(row.unit));
        EXPECT_EQ(row.label, ZORSysValue::GetUnitLabel(row.unit));
        EXPECT_EQ(row.factor, ZORSysValue::GetUnitFactor(row.unit));
    }
    EXPECT_EQ(2, ZORSysValue::GetMagnitudeUnits(ZORSysValue::Angle).size());
}

TEST(ZORSysValueTest, CodesOutsideTheEnumerationAreHarmless)
{
    for (const int code : {-1, 7, 2147483647}) {
        const auto unit = static_cast<ZORSysValue::Unit>(code);
        EXPECT_EQ("", ZORSysValue::GetUnitLabel(unit));
        EXPECT_EQ(1, ZORSysValue::GetUnitFactor(unit));
    }
    for (const int code : {-1, 0, 3})
        EXPECT_TRUE(ZORSysValue::GetMagnitudeUnits(static_cast<ZORSysValue::Magnitude>(code)).isEmpty());
    EXPECT_EQ(ZORSysValue::Millimeter, ZORSysValue::GetUnitFromLabel(QString()));
    EXPECT_EQ(ZORSysValue::Millimeter, ZORSysValue::GetUnitFromLabel("FT"));
}

} // namespace
