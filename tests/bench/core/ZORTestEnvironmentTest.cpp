#include "core/ZORTestEnvironment.h"

#include "core/ZORTestCommand.h"
#include "support/BenchTest.h"

#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QMetaMethod>

namespace {

class ZORTestEnvironmentTest : public BenchTest
{
};

TEST_F(ZORTestEnvironmentTest, KeepsTheFeatureEnvironmentThatWasCurrentAtConstruction)
{
    const ZORTestEnvironment environment;
    ZORFeatEnvironment other;
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&other);
    EXPECT_EQ(GetFeatEnvironment(), environment.GetEnvironment());
    EXPECT_EQ(&other, ZORTestEnvironment().GetEnvironment());
}

TEST_F(ZORTestEnvironmentTest, HoldsNoFeatureEnvironmentWhenNoneIsCurrent)
{
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
    const ZORTestEnvironment environment;
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(GetFeatEnvironment());
    EXPECT_EQ(nullptr, environment.GetEnvironment());
}

TEST_F(ZORTestEnvironmentTest, AsksForTheSettingsStoreOnEveryCall)
{
    const ZORTestEnvironment environment;
    EXPECT_EQ(GetSettings(), environment.GetSettings());
    QSettings other(GetPath(QStringLiteral("other.ini")), QSettings::IniFormat);
    ZORSysSettingsManager::GetManager()->SetSource(&other);
    EXPECT_EQ(&other, environment.GetSettings());
    ZORSysSettingsManager::GetManager()->SetSource(GetSettings());
    EXPECT_EQ(GetSettings(), environment.GetSettings());
}

TEST_F(ZORTestEnvironmentTest, HasNoUiParentBeforeAConsoleAdoptsIt)
{
    EXPECT_EQ(nullptr, ZORTestEnvironment().GetUiParent());
}

TEST_F(ZORTestEnvironmentTest, DeletesItsCommandsButNotWhatBelongsToTheHost)
{
    auto environment = std::make_unique<ZORTestEnvironment>();
    const QPointer<ZORTestCommand> command(new ZORTestCommand(environment.get()));
    const QPointer<ZORFeatEnvironment> featEnvironment(environment->GetEnvironment());
    environment.reset();
    EXPECT_EQ(nullptr, command.data());
    EXPECT_EQ(GetFeatEnvironment(), featEnvironment.data());
}

TEST_F(ZORTestEnvironmentTest, AddsNoSignalSlotOrPropertyToQObject)
{
    const QMetaObject& meta = ZORTestEnvironment::staticMetaObject;
    EXPECT_EQ(meta.methodOffset(), meta.methodCount());
    EXPECT_EQ(meta.propertyOffset(), meta.propertyCount());
    EXPECT_STREQ("QObject", meta.superClass()->className());
}

} // namespace
