#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <cmath>
#include <numbers>

namespace {

constexpr const char* kId = "ZORCompStrategyCmd.Create";

using ZORCompStrategyCmdTest = StandardCommandsTest;

TEST_F(ZORCompStrategyCmdTest, CreatesAStrategyOfTheDefaults)
{
    Open(kId);
    EXPECT_EQ(Accept(), QString());
    const auto* const strategy = GetOnly<ZORCompStrategy>();
    ASSERT_NE(strategy, nullptr);
    EXPECT_EQ(strategy->GetParameters(), ZORCompStrategyParameters());
    EXPECT_EQ(strategy->GetLabel(), QString("Strategy 1"));
    EXPECT_EQ(strategy->GetParentFeature(), GetOnly<ZORCompRoot>());
}

TEST_F(ZORCompStrategyCmdTest, TakesAllParameters)
{
    Open(kId);
    Choose("_GeneratorsCombo", "Constant angle");
    SetNumber("_StepSpin", 2.5);
    SetNumber("_FibreAngleSpin", 45);
    SetNumber("_YarnAngleSpin", 60);
    SetNumber("_LockingAngleSpin", 30);
    SetNumber("_WarpExtentSpin", 100);
    EXPECT_EQ(Accept(), QString());
    const auto* const strategy = GetOnly<ZORCompStrategy>();
    ASSERT_NE(strategy, nullptr);
    const ZORCompStrategyParameters& parameters = strategy->GetParameters();
    EXPECT_EQ(parameters.generators, ZORCompStrategyParameters::ConstantAngle);
    EXPECT_EQ(parameters.step, 2.5);
    EXPECT_NEAR(parameters.fibreAngle, std::numbers::pi / 4, 1e-12);
    EXPECT_NEAR(parameters.yarnAngle, std::numbers::pi / 3, 1e-12);
    EXPECT_NEAR(parameters.lockingAngle, std::numbers::pi / 6, 1e-12);
    EXPECT_EQ(parameters.warpExtent, 100);
    EXPECT_TRUE(std::isinf(parameters.weftExtent));
}

TEST_F(ZORCompStrategyCmdTest, DrapesASurfaceWhereOneIsChosen)
{
    auto* const skin = AddSurface("Skin");
    auto* const seed = AddPoint("Middle", {50, 50, 3});
    Open(kId);
    EXPECT_EQ(GetEntry("_SurfaceCombo"), QString("None"));
    EXPECT_FALSE(Find<QWidget>("_SeedCombo")->isVisible());
    Choose("_SurfaceCombo", "Skin");
    EXPECT_TRUE(Find<QWidget>("_SeedCombo")->isVisible());
    SetTriple("_Direction", 0, 0, 0);
    EXPECT_EQ(GetProblem(), QString("The direction has no length."));
    SetTriple("_Direction", 0, 1, 0);
    EXPECT_EQ(Accept(), QString());
    const auto* const layer = GetOnly<ZORCompDrapingLayer>();
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->GetLabel(), QString("Layer 1"));
    EXPECT_EQ(layer->GetStrategy(), GetOnly<ZORCompStrategy>());
    EXPECT_EQ(layer->GetSurface(), skin);
    EXPECT_EQ(layer->GetSeed(), seed);
    EXPECT_EQ(layer->GetDirection(), ZORMathVector(0, 1, 0));
    ASSERT_NE(layer->GetBody(), nullptr);
    EXPECT_EQ(layer->GetBody()->GetDimension(), 2);
    EXPECT_NEAR(layer->GetMaximumShear(), 0, 1e-6) << "a plane needs none";
}

TEST_F(ZORCompStrategyCmdTest, NeedsASeedToDrapeASurfaceAndKeepsNothingWhenThatFails)
{
    AddSurface("Skin");
    auto* const empty = new ZORGeoSurface(container, QList<ZORMathPoint>{}, QList<ZORGeoSurface::Corners>{});
    empty->setObjectName("Empty");
    empty->Initialize();
    Open(kId);
    Choose("_SurfaceCombo", "Skin");
    EXPECT_EQ(GetProblem(), QString("Choose the point where draping starts."));
    AddPoint("Middle", {50, 50, 3});
    ProcessEvents();
    EXPECT_EQ(GetProblem(), QString());
    Choose("_SurfaceCombo", "Empty");
    const int numGeometry = container->GetNumGeometry();
    EXPECT_EQ(Accept(), QString("the seed cannot be projected onto the surface"));
    EXPECT_EQ(container->GetNumGeometry(), numGeometry);
    Choose("_SurfaceCombo", "None");
    EXPECT_EQ(Accept(), QString());
    EXPECT_TRUE(GetAll<ZORCompDrapingLayer>().isEmpty());
    EXPECT_NE(GetOnly<ZORCompStrategy>(), nullptr);
}

TEST_F(ZORCompStrategyCmdTest, DoesNotTakeParametersThatDoNotFit)
{
    Open(kId);
    SetNumber("_StepSpin", 0);
    EXPECT_EQ(GetProblem(), QString("Step is not a length above 0."));
    SetNumber("_StepSpin", 1);
    SetNumber("_YarnAngleSpin", 5);
    EXPECT_EQ(GetProblem(), QString("Yarn angle is not between 10 and 170 degrees."));
    SetNumber("_YarnAngleSpin", 90);
    SetNumber("_LockingAngleSpin", 91);
    EXPECT_EQ(GetProblem(), QString("Locking angle is not between 0 and 90 degrees."));
    EXPECT_EQ(Accept(), GetProblem());
    SetNumber("_LockingAngleSpin", 45);
    EXPECT_EQ(GetProblem(), QString());
    Cancel();
    EXPECT_EQ(container->GetNumGeometry(), 0);
}

} // namespace
