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

} // namespace
