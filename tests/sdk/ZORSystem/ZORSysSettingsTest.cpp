// Tests of ZORSysSettingsManager and ZORSysSettingGroupContext.

#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysSettingGroupContext.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

class ZORSysSettingsTest : public testing::Test
{
protected:
    ~ZORSysSettingsTest() override { ZORSysSettingsManager::GetManager()->SetSource(nullptr); }

    QTemporaryDir directory;
    QSettings settings{directory.filePath("settings.ini"), QSettings::IniFormat};
};

TEST_F(ZORSysSettingsTest, TheManagerHandsOutTheStoreThatWasSetLast)
{
    ZORSysSettingsManager* manager = ZORSysSettingsManager::GetManager();
    EXPECT_EQ(nullptr, manager->GetSource());
    manager->SetSource(&settings);
    EXPECT_EQ(&settings, manager->GetSource());
    auto other = std::make_unique<QSettings>(directory.filePath("other.ini"), QSettings::IniFormat);
    manager->SetSource(other.get());
    EXPECT_EQ(other.get(), manager->GetSource());
    other.reset();
    EXPECT_EQ(nullptr, manager->GetSource());
}

TEST_F(ZORSysSettingsTest, GroupsNestAndEndWithTheirGuards)
{
    {
        const ZORSysSettingGroupContext debug(&settings, "Debug");
        settings.setValue("A", 1);
        {
            const ZORSysSettingGroupContext group(&settings, "GeoGeodesic");
            EXPECT_EQ("Debug/GeoGeodesic", settings.group());
            settings.setValue("B", 2.5);
        }
        EXPECT_EQ("Debug", settings.group());
        const ZORSysSettingGroupContext levels(&settings, "Visualization/Curve");
        settings.setValue("C", true);
    }
    EXPECT_EQ("", settings.group());
    EXPECT_EQ(QStringList({"Debug/A", "Debug/GeoGeodesic/B", "Debug/Visualization/Curve/C"}),
              settings.allKeys());
}

TEST_F(ZORSysSettingsTest, AnExceptionLeavesTheGroup)
{
    try {
        const ZORSysSettingGroupContext group(&settings, "Debug");
        throw ZORSysException("x");
    } catch (const ZORSysException&) {
        EXPECT_EQ("", settings.group());
    }
}

TEST_F(ZORSysSettingsTest, NoStoreIsAnException)
{
    try {
        const ZORSysSettingGroupContext group(nullptr, "Debug");
        ADD_FAILURE() << "no exception";
    } catch (const ZORSysException& exception) {
        EXPECT_EQ("no settings store set", exception.GetMessage());
    }
}

} // namespace
