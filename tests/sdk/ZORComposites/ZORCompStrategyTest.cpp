// Tests draping strategies.

#include "DrapingChecks.h"
#include "support/ContainerFiles.h"

#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>

#include <QSignalSpy>

#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class ZORCompStrategyTest : public testing::Test
{
protected:
    ZORCompStrategyTest()
        : root(new ZORFeatRoot(&container))
    {
        root->Initialize();
    }
    ZORCompStrategy* AddStrategy(ZORFeatObject* parent)
    {
        auto* const strategy = new ZORCompStrategy(parent);
        strategy->Initialize();
        return strategy;
    }

    ZORFeatContainer container;
    ZORFeatRoot* const root; // owned by the container
};

} // namespace

TEST_F(ZORCompStrategyTest, LiesAnywhereBelowTheRoot)
{
    auto* const folder = new ZORFeatFolder(root);
    folder->Initialize();
    ZORCompStrategy* const first = AddStrategy(folder);
    ZORCompStrategy* const second = AddStrategy(root);
    EXPECT_EQ((QList<ZORFeatObject*>{folder, first, second}), root->GetAllChildren());
    EXPECT_EQ(QLatin1String("Strategy.1"), first->GetLabel());
    EXPECT_TRUE(QMetaType::fromName("ZORCompStrategy*").isValid()
                || qRegisterMetaType<ZORCompStrategy*>() > 0);
    EXPECT_STREQ("ZORCompStrategy*", QMetaType::fromType<ZORCompStrategy*>().name());
}

TEST_F(ZORCompStrategyTest, TellsOfNewParametersOnly)
{
    ZORCompStrategy* const strategy = AddStrategy(root);
    const QSignalSpy changes(strategy, &ZORCompStrategy::ParametersChanged);
    strategy->SetParameters(ZORCompStrategyParameters());
    EXPECT_EQ(0, changes.size());
    strategy->SetParameters(WithStep(3));
    EXPECT_EQ(1, changes.size());
    EXPECT_EQ(3, strategy->GetParameters().step);
    ZORCompStrategyParameters unbounded = WithStep(3);
    unbounded.warpExtent = kNaN;
    strategy->SetParameters(unbounded);
    EXPECT_EQ(1, changes.size()) << "no bound either";
}

TEST_F(ZORCompStrategyTest, RefusesBadParametersAndKeepsThoseBefore)
{
    ZORCompStrategy* const strategy = AddStrategy(root);
    const auto failureOf = [&](const std::function<void(ZORCompStrategyParameters&)>& change) {
        ZORCompStrategyParameters parameters = WithStep(7);
        change(parameters);
        const QString failure = MessageOf([&] { strategy->SetParameters(parameters); });
        EXPECT_EQ(10, strategy->GetParameters().step);
        return failure;
    };
    using Parameters = ZORCompStrategyParameters;
    EXPECT_EQ(QLatin1String("generators 2 are unknown"),
              failureOf([](Parameters& p) { p.generators = Parameters::Generators(2); }));
    EXPECT_EQ(QLatin1String("step is not a length above 0"), failureOf([](Parameters& p) { p.step = 0; }));
    EXPECT_EQ(QLatin1String("fibre angle is not finite"),
              failureOf([](Parameters& p) { p.fibreAngle = kNaN; }));
    for (const double angle : {kNaN, 0.0, 9.9 * kDegree, 170.1 * kDegree, -kDegree})
        EXPECT_EQ(QLatin1String("yarn angle is not between 10 and 170 degrees"),
                  failureOf([=](Parameters& p) { p.yarnAngle = angle; }));
    for (const double angle : {kNaN, -0.1, 90.1 * kDegree})
        EXPECT_EQ(QLatin1String("locking angle is not between 0 and 90 degrees"),
                  failureOf([=](Parameters& p) { p.lockingAngle = angle; }));
    EXPECT_EQ(QLatin1String("extent is negative"), failureOf([](Parameters& p) { p.warpExtent = -1; }));
    EXPECT_EQ(QLatin1String("extent is negative"), failureOf([](Parameters& p) { p.weftExtent = -1e-9; }));
}

TEST_F(ZORCompStrategyTest, TakesTheLimitsOfItsAngles)
{
    ZORCompStrategyParameters parameters;
    for (const double angle : {10 * kDegree, 170 * kDegree}) {
        parameters.yarnAngle = angle;
        EXPECT_NO_THROW(parameters.Check());
    }
    for (const double angle : {0.0, 90 * kDegree}) {
        parameters.lockingAngle = angle;
        EXPECT_NO_THROW(parameters.Check());
    }
}

TEST_F(ZORCompStrategyTest, ComesBackFromContainerFiles)
{
    ZORCompStrategy* const strategy = AddStrategy(root);
    strategy->SetLabel(QStringLiteral("Fine"));
    ZORCompStrategyParameters parameters = WithStep(0.1, 1.0 / 3);
    parameters.generators = ZORCompStrategyParameters::ConstantAngle;
    parameters.yarnAngle = 60 * kDegree;
    parameters.lockingAngle = 0.7;
    parameters.warpExtent = 123.4;
    parameters.weftExtent = kNaN;
    strategy->SetParameters(parameters);
    ZORFeatContainer loaded;
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const copy = qobject_cast<ZORCompStrategy*>(loaded.GetGeometryByIndex(1));
    ASSERT_TRUE(copy);
    EXPECT_TRUE(parameters == copy->GetParameters());
    EXPECT_EQ(QLatin1String("Fine"), copy->GetLabel());
}
