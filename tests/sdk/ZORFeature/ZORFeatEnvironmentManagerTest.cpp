#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace {

class ZORFeatEnvironmentManagerTest : public testing::Test
{
public:
    ~ZORFeatEnvironmentManagerTest() override { manager->SetCurrentEnvironment(nullptr); }

    ZORFeatEnvironmentManager* const manager = ZORFeatEnvironmentManager::GetManager();
    QSignalSpy changes{manager, &ZORFeatEnvironmentManager::CurrentEnvironmentChanged};
};

TEST_F(ZORFeatEnvironmentManagerTest, HasNoCurrentEnvironmentAtFirst)
{
    EXPECT_EQ(ZORFeatEnvironmentManager::GetManager(), manager);
    EXPECT_EQ(manager->GetCurrentEnvironment(), nullptr);
}

TEST_F(ZORFeatEnvironmentManagerTest, TellsEveryChangeOnce)
{
    ZORFeatEnvironment first;
    ZORFeatEnvironment second;
    EXPECT_EQ(manager->GetCurrentEnvironment(), nullptr) << "a new environment is not current by itself";
    manager->SetCurrentEnvironment(&first);
    manager->SetCurrentEnvironment(&first);
    EXPECT_EQ(manager->GetCurrentEnvironment(), &first);
    manager->SetCurrentEnvironment(&second);
    manager->SetCurrentEnvironment(nullptr);
    manager->SetCurrentEnvironment(nullptr);
    ASSERT_EQ(changes.size(), 3);
    EXPECT_EQ(changes[0][0].value<ZORFeatEnvironment*>(), &first);
    EXPECT_EQ(changes[1][0].value<ZORFeatEnvironment*>(), &second);
    EXPECT_EQ(changes[2][0].value<ZORFeatEnvironment*>(), nullptr);
}

TEST_F(ZORFeatEnvironmentManagerTest, HasNoneAfterTheCurrentOneIsDestroyed)
{
    auto environment = std::make_unique<ZORFeatEnvironment>();
    manager->SetCurrentEnvironment(environment.get());
    environment.reset();
    EXPECT_EQ(manager->GetCurrentEnvironment(), nullptr);
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes[1][0].value<ZORFeatEnvironment*>(), nullptr);
}

TEST_F(ZORFeatEnvironmentManagerTest, KeepsTheCurrentOneWhenAnotherIsDestroyed)
{
    ZORFeatEnvironment current;
    manager->SetCurrentEnvironment(&current);
    {
        const ZORFeatEnvironment other;
    }
    EXPECT_EQ(manager->GetCurrentEnvironment(), &current);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(ZORFeatEnvironmentManagerTest, AcceptsASuccessorWhileTheCurrentOneIsDestroyed)
{
    ZORFeatEnvironment successor;
    auto environment = std::make_unique<ZORFeatEnvironment>();
    manager->SetCurrentEnvironment(environment.get());
    QObject::connect(environment.get(), &ZORFeatEnvironment::AboutToBeDestroyed,
                     [&] { manager->SetCurrentEnvironment(&successor); });
    environment.reset();
    EXPECT_EQ(manager->GetCurrentEnvironment(), &successor);
}

} // namespace
