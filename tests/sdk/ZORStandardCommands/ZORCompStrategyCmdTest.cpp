#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompStrategy.h>

#include <cmath>
#include <numbers>

namespace {

constexpr const char* Id = "ZORCompStrategyCmd.Create";

using ZORCompStrategyCmdTest = StandardCommandsTest;

TEST_F(ZORCompStrategyCmdTest, CreatesAStrategyOfTheDefaults)
{
    Open(Id);
    EXPECT_EQ(Accept(), QString());
    const auto* const strategy = GetOnly<ZORCompStrategy>();
    ASSERT_NE(strategy, nullptr);
    EXPECT_EQ(strategy->GetParameters(), ZORCompStrategyParameters());
    EXPECT_EQ(strategy->GetLabel(), QString("Strategy 1"));
    EXPECT_EQ(strategy->GetParentFeature(), GetOnly<ZORCompRoot>());
}

TEST_F(ZORCompStrategyCmdTest, TakesAllParameters)
{
    Open(Id);
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

TEST_F(ZORCompStrategyCmdTest, DoesNotTakeParametersThatDoNotFit)
{
    Open(Id);
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
