// Tests of ZORSysVersion.

#include "support/Printers.h"

#include <ZORSystem/ZORSysVersion.h>

#include <gtest/gtest.h>

namespace {

TEST(ZORSysVersionTest, TheTextIsMadeOfTheNumbers)
{
    EXPECT_EQ(QString("%1.%2.%3")
                  .arg(QString::number(ZORSysVersion::GetMajor()), QString::number(ZORSysVersion::GetMinor()),
                       QString::number(ZORSysVersion::GetPatch())),
              ZORSysVersion::GetString());
    EXPECT_EQ(SDK_PROJECT_VERSION, ZORSysVersion::GetString());
}

TEST(ZORSysVersionTest, TheSameMajorAndNoNewerMinorVersionIsCompatible)
{
    const int major = ZORSysVersion::GetMajor();
    const int minor = ZORSysVersion::GetMinor();
    const auto isCompatible = [](int a, int b) {
        return ZORSysVersion::IsCompatible(QString("%1.%2.99").arg(QString::number(a), QString::number(b)));
    };
    EXPECT_TRUE(ZORSysVersion::IsCompatible(ZORSysVersion::GetString()));
    EXPECT_TRUE(ZORSysVersion::IsCompatible(QString::number(major)));
    EXPECT_TRUE(isCompatible(major, minor));
    EXPECT_FALSE(isCompatible(major, minor + 1));
    EXPECT_FALSE(isCompatible(major + 1, minor));
    EXPECT_FALSE(isCompatible(major - 1, minor));
    EXPECT_FALSE(ZORSysVersion::IsCompatible(QString()));
    EXPECT_FALSE(ZORSysVersion::IsCompatible("unknown"));
    EXPECT_FALSE(ZORSysVersion::IsCompatible("99999999999999999999.0"));
}

} // namespace
