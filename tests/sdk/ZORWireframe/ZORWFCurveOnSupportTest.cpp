// Tests of ZORWFCurveOnSupport: what it computes from which inputs.

#include "CurveOnSupportTest.h"

#include <ZORGeometry/ZORGeoPointOnSurface.h>

#include <cmath>
#include <functional>

namespace {

using ZORWFCurveOnSupportTest = CurveOnSupportTest;

TEST_F(ZORWFCurveOnSupportTest, StartsWithoutInputsAndWithoutABody)
{
    const auto* const curve = Add<ZORWFCurveOnSupport>();
    EXPECT_EQ(curve->GetBody(), nullptr);
    EXPECT_EQ(curve->GetFailure(), QString());
    EXPECT_EQ(curve->GetComputationMethod(), kPointToPoint);
    EXPECT_TRUE(std::isnan(curve->GetStartLength()));
    EXPECT_TRUE(std::isnan(curve->GetEndLength()));
    EXPECT_EQ(curve->GetAngle(), 0);
    EXPECT_FALSE(curve->IsDirectionFlipped());
    EXPECT_EQ(curve->GetSupport(), nullptr);
    EXPECT_EQ(curve->GetDirection(), nullptr);
    EXPECT_TRUE(curve->GetStartLimits().isEmpty());
    EXPECT_EQ(curve->GetLabel(), QString("CurveOnSupport.1"));
    EXPECT_EQ(curve->GetParentFeature(), folder);
    EXPECT_TRUE(container.GetRegisteredTypes().contains(&ZORWFCurveOnSupport::staticMetaObject));
}

TEST_F(ZORWFCurveOnSupportTest, PointToPointIsTheShortestWay)
{
    const auto* const feature = AddPointToPoint(start, AddPoint({100, 80, 50}));
    ASSERT_TRUE(Runs(feature, {50, 20, 0}, {100, 80, 50}));
    const ZORGeoCurveOnSurface* const curve = CurveOf(feature);
    EXPECT_NEAR(curve->GetLength(), std::hypot(100, 60), 1e-9) << "straight over the unfolded edge";
    EXPECT_EQ(curve->GetSurface(), surface);
    EXPECT_TRUE(curve->IsInitialized());
    EXPECT_TRUE(feature->GetBody()->IsInitialized());
    EXPECT_EQ(feature->GetBody()->GetDimension(), 1);
}

TEST_F(ZORWFCurveOnSupportTest, PointDirectionIsTheStraightestGeodesic)
{
    auto* const feature = AddDirected(kPointDirection);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0}));
    feature->SetDirection(AddLine({0, 0, 0}, {10, 6, 0}));
    feature->SetStartLength(0);
    feature->SetEndLength(std::hypot(100, 60));
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {100, 80, 50})) << "up the wall without a bend";
}

TEST_F(ZORWFCurveOnSupportTest, ConstantAngleKeepsItsAngleToTheDirection)
{
    auto* const feature = AddDirected(kConstantAngle);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0}));
    // Straight on a geodesic would keep y = x / 2; against Z the wall shows another angle than the floor.
    feature->SetDirection(AddLine({0, 0, 0}, {10, 5, 10}));
    feature->SetStartLength(0);
    feature->SetEndLength(std::hypot(50, 25) + std::hypot(10, 5));
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {100, 50, 10}));
    feature->SetDirection(AddLine({0, 0, 0}, {10, 5, 0}));
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {100, 45 + std::hypot(10, 5), 0}))
        << "on the wall the projected direction runs along the edge";
    // A quarter turn clockwise from Y: along X, then up.
    feature->SetDirection(AddLine({0, 0, 0}, {0, 1, 0}));
    feature->SetAngle(-kPi / 2);
    feature->SetEndLength(80);
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {100, 20, 30}));
}

TEST_F(ZORWFCurveOnSupportTest, LengthsBoundTheSidesAndNanDoesNot)
{
    auto* const feature = AddDirected(kPointDirection);
    feature->SetStartLength(kNan);
    EXPECT_TRUE(Runs(feature, {0, 20, 0}, {80, 20, 0}));
    feature->SetEndLength(std::numeric_limits<double>::infinity());
    EXPECT_TRUE(Runs(feature, {0, 20, 0}, {100, 20, 100}));
    feature->SetStartLength(5);
    feature->SetEndLength(0);
    EXPECT_TRUE(Runs(feature, {45, 20, 0}, {50, 20, 0}));
}

TEST_F(ZORWFCurveOnSupportTest, LimitsEndTheirSideAndNeverLengthenIt)
{
    auto* const feature = AddDirected(kPointDirection);
    auto* const near = AddLimit({70, 0, 0}, {70, 40, 0});
    auto* const behind = AddLimit({45, 0, 0}, {45, 40, 0});
    feature->AddEndLimit(behind);
    feature->AddStartLimit(near);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0})) << "each on the other side";
    feature->AddEndLimit(near);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {70, 20, 0}));
    feature->AddStartLimit(behind);
    EXPECT_TRUE(Runs(feature, {45, 20, 0}, {70, 20, 0}));
    EXPECT_EQ(feature->GetStartLimits(), (QList<ZORFeatGeometry*>{near, behind}));
    EXPECT_EQ(feature->GetEndLimits(), (QList<ZORFeatGeometry*>{behind, near}));
    feature->SetStartLength(1);
    feature->SetEndLength(2);
    EXPECT_TRUE(Runs(feature, {49, 20, 0}, {52, 20, 0})) << "soft: not prolonged";
    feature->SetStartLength(kNan);
    feature->SetEndLength(kNan);
    EXPECT_TRUE(Runs(feature, {45, 20, 0}, {70, 20, 0}));
    feature->ClearLimits();
    EXPECT_TRUE(Runs(feature, {0, 20, 0}, {100, 20, 100}));
    EXPECT_EQ(near->GetReferenceCount(), 0);
}

TEST_F(ZORWFCurveOnSupportTest, LimitsMayBeCurvesOnSupportThemselves)
{
    auto* const limit = AddPointToPoint(AddPoint({60, 0, 0}), AddPoint({60, 50, 0}));
    auto* const feature = AddDirected(kConstantAngle);
    feature->AddEndLimit(limit);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {60, 20, 0}));
}

TEST_F(ZORWFCurveOnSupportTest, AngleTurnsCounterClockwiseAndFlipAddsHalfATurn)
{
    for (const auto method : {kPointDirection, kConstantAngle}) {
        auto* const feature = AddDirected(method);
        feature->SetAngle(kPi / 2);
        EXPECT_TRUE(Runs(feature, {50, 10, 0}, {50, 50, 0}));
        feature->SetDirectionFlipped(true);
        EXPECT_TRUE(Runs(feature, {50, 30, 0}, {50, 0, 0})) << "the border cuts it";
        feature->SetAngle(0);
        EXPECT_TRUE(Runs(feature, {60, 20, 0}, {20, 20, 0}));
        feature->SetDirectionFlipped(false);
        EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0}));
    }
}

TEST_F(ZORWFCurveOnSupportTest, DirectionIsThatOfACurveOrTowardsAPointOrAlongX)
{
    auto* const feature = AddDirected(kPointDirection);
    feature->SetDirection(AddPoint({50, 90, 500}));
    EXPECT_TRUE(Runs(feature, {50, 10, 0}, {50, 50, 0})) << "from the start point to the point, projected";
    feature->SetDirection(AddLine({7, 9, 3}, {7, 2, 3}));
    EXPECT_TRUE(Runs(feature, {50, 30, 0}, {50, 0, 0})) << "first to last point";
    feature->SetDirection(container.GetFeatureRoot("ZORFeatRoot"));
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0})) << "X without a shape";
    feature->SetStartPoint(AddPoint({100, 20, 50}));
    EXPECT_TRUE(Runs(feature, {100, 10, 50}, {100, 50, 50})) << "Y where X stands upright";
}

TEST_F(ZORWFCurveOnSupportTest, PointsThatAreNotOnTheSupportAreProjected)
{
    const auto* const feature = AddPointToPoint(AddPoint({10, 10, -7}), AddPoint({90, -30, -2}));
    EXPECT_TRUE(Runs(feature, {10, 10, 0}, {90, 0, 0}));
}

TEST_F(ZORWFCurveOnSupportTest, SamePointTwiceGivesACurveOfOnePoint)
{
    const auto* const feature = AddPointToPoint(start, start);
    ASSERT_TRUE(Runs(feature, {50, 20, 0}, {50, 20, 0}));
    EXPECT_EQ(CurveOf(feature)->GetLength(), 0);
    EXPECT_EQ(start->GetReferenceCount(), 2);
}

TEST_F(ZORWFCurveOnSupportTest, WhatTheMethodDoesNotUseIsKeptButDoesNotMatter)
{
    auto* const feature = AddPointToPoint(start, AddPoint({100, 80, 50}));
    const ZORTopBody* const body = feature->GetBody();
    feature->SetStartLength(-1);
    feature->SetEndLength(1);
    feature->SetDirection(support);
    feature->SetAngle(kNan);
    feature->SetDirectionFlipped(true);
    feature->AddStartLimit(support);
    feature->AddEndLimit(start);
    EXPECT_EQ(feature->GetBody(), body) << "nothing is computed anew";
    EXPECT_EQ(feature->GetFailure(), QString());
    EXPECT_EQ(feature->GetEndLength(), 1);
    EXPECT_EQ(feature->GetDirection(), support);

    auto* const directed = AddDirected(kPointDirection);
    directed->SetEndPoint(support);
    EXPECT_TRUE(Runs(directed, {40, 20, 0}, {80, 20, 0}));
}

TEST_F(ZORWFCurveOnSupportTest, FailuresOfCompleteInputsSayWhatIsWrong)
{
    auto* const point = AddPoint({60, 20, 0});
    auto* const island = Add<ZORWFRawSurface>(Make<ZORGeoSurface>(
        "Islands",
        QList<ZORMathPoint>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {90, 90, 0}, {91, 90, 0}, {90, 91, 0}},
        QList<ZORGeoSurface::Corners>{{0, 1, 2}, {3, 4, 5}}));
    auto* const empty = Add<ZORWFRawSurface>(
        Make<ZORGeoSurface>("Empty", QList<ZORMathPoint>{}, QList<ZORGeoSurface::Corners>{}));
    auto* const line = AddLine({0, 0, 0}, {1, 0, 0});
    auto* const loop = Add<ZORWFRawCurve>(
        Make<ZORGeoPolyline>("Loop", ZORMathSetOfPoints{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}}, true));
    line->SetLabel("a line");

    auto* feature = AddPointToPoint(start, point);
    const ZORTopBody* body = feature->GetBody();
    EXPECT_EQ(MessageOf([&] { feature->SetSupport(line); }), QString("the support is no surface"));
    EXPECT_EQ(feature->GetFailure(), QString("the support is no surface"));
    EXPECT_EQ(feature->GetBody(), body) << "the last good result stays";
    EXPECT_EQ(feature->GetSupport(), line) << "the input is kept";
    EXPECT_EQ(MessageOf([&] { feature->SetSupport(empty); }),
              QString("the start point cannot be projected onto the support"));
    feature->SetSupport(support);
    EXPECT_EQ(feature->GetFailure(), QString());
    EXPECT_EQ(MessageOf([&] { feature->SetStartPoint(line); }), QString("the start point is no point"));
    feature->SetStartPoint(start);
    EXPECT_EQ(MessageOf([&] { feature->SetEndPoint(line); }), QString("the end point is no point"));
    feature->SetEndPoint(AddPoint({90, 90, 0}));
    EXPECT_EQ(MessageOf([&] { feature->SetSupport(island); }),
              QString("the support does not connect the start point with the end point"));

    feature = AddDirected(kConstantAngle);
    body = feature->GetBody();
    const auto fails = [&](const QString& message, const std::function<void()>& call) {
        EXPECT_EQ(MessageOf(call), message);
        EXPECT_EQ(feature->GetFailure(), message);
        EXPECT_EQ(feature->GetBody(), body) << message.toStdString();
    };
    fails("the direction is neither a curve nor a point", [&] { feature->SetDirection(support); });
    fails("the curve of the direction ends where it starts", [&] { feature->SetDirection(loop); });
    fails("the point of the direction is the start point", [&] { feature->SetDirection(start); });
    fails("the direction is perpendicular to the support at the start point", [&] {
        feature->SetDirection(AddPoint({50, 20, 9}));
    });
    feature->SetDirection(folder);
    body = feature->GetBody();
    fails("start length is negative", [&] { feature->SetStartLength(-1); });
    feature->SetStartLength(1);
    body = feature->GetBody();
    fails("end length is negative", [&] { feature->SetEndLength(-1e-9); });
    feature->SetEndLength(1);
    body = feature->GetBody();
    fails("angle is not finite", [&] { feature->SetAngle(kNan); });
    feature->SetAngle(0);
    body = feature->GetBody();
    fails("the limit 'a line' is no curve on the support", [&] { feature->AddStartLimit(line); });
    feature->ClearLimits();
    body = feature->GetBody();
    fails("the limit 'a line' is no curve on the support", [&] { feature->AddEndLimit(line); });
}

TEST_F(ZORWFCurveOnSupportTest, UnknownMethodIsRefused)
{
    auto* const feature = AddPointToPoint(start, AddPoint({60, 20, 0}));
    for (const int method : {-1, 3})
        EXPECT_EQ(MessageOf([&] {
                      feature->SetComputationMethod(
                          static_cast<ZORWFCurveOnSupport::ComputationMethod>(method));
                  }),
                  QString("computation method %1 is unknown").arg(method));
    EXPECT_EQ(feature->GetComputationMethod(), kPointToPoint);
}

TEST_F(ZORWFCurveOnSupportTest, CannotDependOnItself)
{
    auto* const first = AddPointToPoint(start, AddPoint({60, 20, 0}));
    auto* const second = AddDirected(kPointDirection);
    auto* const third = AddDirected(kConstantAngle);
    second->AddEndLimit(first);
    third->AddStartLimit(second);
    const QString message("a feature cannot depend on itself");
    EXPECT_EQ(MessageOf([&] { first->SetDirection(first); }), message);
    EXPECT_EQ(MessageOf([&] { first->SetDirection(third); }), message);
    EXPECT_EQ(MessageOf([&] { first->AddStartLimit(third); }), message);
    EXPECT_EQ(MessageOf([&] { second->SetSupport(third); }), message);
    EXPECT_EQ(first->GetDirection(), nullptr);
    EXPECT_TRUE(first->GetStartLimits().isEmpty());
    EXPECT_EQ(second->GetSupport(), support);
    EXPECT_EQ(first->GetReferenceCount(), 1);
    EXPECT_EQ(third->GetReferenceCount(), 0);
}

} // namespace
