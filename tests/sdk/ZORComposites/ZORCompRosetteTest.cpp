// Tests of ZORCompRosette.

#include "LayupTest.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <QSignalSpy>

#include <cmath>

namespace {

using ZORCompRosetteTest = LayupTest;

TEST_F(ZORCompRosetteTest, ARosetteMakesItsAxesPerpendicular)
{
    const ZORCompRosette* const rosette =
        Add<ZORCompRosette>(layup, ZORMathPoint(1, 2, 3), ZORMathVector(3, 4, 100), ZORMathVector(0, 0, 7));
    EXPECT_NEAR(0, (rosette->GetXAxis() - ZORMathVector(0.6, 0.8, 0)).GetLength(), 1e-15);
    EXPECT_NEAR(0, (rosette->GetYAxis() - ZORMathVector(-0.8, 0.6, 0)).GetLength(), 1e-15);
    EXPECT_EQ(ZORMathVector(0, 0, 1), rosette->GetNormal());
    EXPECT_EQ(ZORMathVector(3, 4, 100), rosette->GetGivenXAxis());
    ASSERT_TRUE(rosette->GetBody());
    const auto* const line = qobject_cast<const ZORGeoCurve*>(rosette->GetBody()->GetGeometry());
    ASSERT_TRUE(line);
    EXPECT_EQ(ZORMathPoint(1, 2, 3), line->GetPoint(0));
    EXPECT_NEAR(10, line->GetLength(), 1e-14);
}

TEST_F(ZORCompRosetteTest, AxesWithoutDirectionAreRefusedAndTheOldOnesStay)
{
    auto* const rosette = Add<ZORCompRosette>(layup);
    const ZORMathVector x(1, 0, 0);
    const ZORMathVector z(0, 0, 1);
    const auto messageOf = [rosette](const ZORMathPoint& o, const ZORMathVector& a, const ZORMathVector& n) {
        return MessageOf([&] { rosette->SetAxes(o, a, n); });
    };
    const ZORTopBody* const body = rosette->GetBody();
    EXPECT_EQ(QString("the origin of the rosette is not finite or too far away"),
              messageOf({kNaN, 0, 0}, x, z));
    EXPECT_EQ(QString("the origin of the rosette is not finite or too far away"),
              messageOf({2e60, 0, 0}, x, z));
    EXPECT_EQ(QString("the normal of the rosette has no direction"), messageOf({}, x, {}));
    EXPECT_EQ(QString("the X axis of the rosette has no direction"), messageOf({}, {kInfinity, 0, 0}, z));
    EXPECT_EQ(QString("the X axis of the rosette is parallel to its normal"),
              messageOf({}, {1e-10, 0, -1}, z));
    EXPECT_EQ(x, rosette->GetXAxis());
    EXPECT_EQ(body, rosette->GetBody());
    EXPECT_EQ(QString(), messageOf({}, {1e-8, 0, -1}, z));
    EXPECT_EQ(x, rosette->GetXAxis());
    EXPECT_THROW(ZORCompRosette(layup, {}, x, x), ZORSysException);
}

TEST_F(ZORCompRosetteTest, ANewBodyTakesOverTheNamesAndIsTold)
{
    auto* const rosette = Add<ZORCompRosette>(layup);
    QSignalSpy changes(rosette, &ZORFeatGeometry::BodyChanged);
    const QString name = rosette->GetBody()->objectName();
    const int numBefore = container.GetNumGeometry();
    rosette->SetAxes({1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    EXPECT_EQ(1, changes.size());
    EXPECT_EQ(name, rosette->GetBody()->objectName());
    EXPECT_EQ(numBefore, container.GetNumGeometry());
    rosette->Remove();
    EXPECT_EQ(numBefore - 3, container.GetNumGeometry());
}

TEST_F(ZORCompRosetteTest, ARosetteOnASurfaceLiesInItsTangentPlaneAndStaysWithoutIt)
{
    ZORGeoSurface* const wall = AddWall();
    auto* const rosette =
        Add<ZORCompRosette>(layup, ZORMathPoint(5, 1, 2), ZORMathVector(1, 2, 0), ZORMathVector(0, 0, 1));
    rosette->SetSurface(wall);
    EXPECT_EQ(wall, rosette->GetSurface());
    EXPECT_EQ(1, wall->GetReferenceCount());
    EXPECT_NEAR(0, rosette->GetOrigin().DistanceTo({3, 1, 2}), 1e-15);
    EXPECT_NEAR(0, (rosette->GetXAxis() - ZORMathVector(0, 1, 0)).GetLength(), 1e-15);
    EXPECT_EQ(ZORMathVector(1, 0, 0), rosette->GetNormal());
    EXPECT_EQ(QString("the X axis of the rosette is perpendicular to the surface"), MessageOf([&] {
                  rosette->SetAxes({5, 1, 2}, {1, 0, 0}, {0, 0, 1});
              }));
    delete wall;
    EXPECT_FALSE(rosette->GetSurface());
    EXPECT_EQ(ZORMathVector(1, 0, 0), rosette->GetNormal());
    rosette->SetSurface(nullptr);
    EXPECT_EQ(ZORMathPoint(5, 1, 2), rosette->GetOrigin());
    ZORGeoSurface empty(&container, {}, {});
    EXPECT_EQ(QString("the surface of the rosette is empty"),
              MessageOf([&] { rosette->SetSurface(&empty); }));
}

TEST_F(ZORCompRosetteTest, DirectionsTurnAboutTheNormalFromTheProjectedX)
{
    const ZORCompRosette* const rosette = Add<ZORCompRosette>(layup);
    const auto expectNear = [](const ZORMathVector& expected, const ZORMathVector& actual) {
        EXPECT_NEAR(0, (expected - actual).GetLength(), 1e-15);
    };
    expectNear({0, 1, 0}, rosette->GetDirection({0, 0, 5}, std::numbers::pi / 2));
    expectNear({0, -1, 0}, rosette->GetDirection({0, 0, -5}, std::numbers::pi / 2));
    const double half = std::sqrt(0.5);
    expectNear({half, 0, -half}, rosette->GetDirection({1, 0, 1}, 0));
    EXPECT_EQ(ZORMathVector(), rosette->GetDirection({1, 0, 0}, 0));
    EXPECT_EQ(ZORMathVector(), rosette->GetDirection({}, 0));
    EXPECT_EQ(ZORMathVector(), rosette->GetDirection({0, 0, 1}, kNaN));
}

TEST_F(ZORCompRosetteTest, PliesTakeTheNearestRosetteAbove)
{
    auto* const inner = Add<ZORCompSequence>(sequence);
    ZORCompPly* const ply = AddPly(0, nullptr, inner);
    EXPECT_FALSE(ply->GetEffectiveRosette());
    auto* const ofLayup = Add<ZORCompRosette>(layup);
    auto* const ofSequence = Add<ZORCompRosette>(layup);
    auto* const own = Add<ZORCompRosette>(layup);
    layup->SetRosette(ofLayup);
    EXPECT_EQ(ofLayup, ply->GetEffectiveRosette());
    sequence->SetRosette(ofSequence);
    EXPECT_EQ(ofSequence, ply->GetEffectiveRosette());
    EXPECT_EQ(ofSequence, inner->GetEffectiveRosette());
    ply->SetRosette(own);
    EXPECT_EQ(own, ply->GetEffectiveRosette());
    EXPECT_EQ(1, own->GetReferenceCount());
    own->Remove();
    EXPECT_EQ(ofSequence, ply->GetEffectiveRosette());
    EXPECT_EQ(inner, ply->GetSequence());
    EXPECT_EQ(layup, ply->GetLayup());
    EXPECT_EQ(layup, inner->GetLayup());
}

TEST_F(ZORCompRosetteTest, OwnsItsLineAndItsBody)
{
    auto* const rosette = Add<ZORCompRosette>(layup);
    const auto expected = [rosette] {
        ZORTopBody* const body = rosette->GetBody();
        return QList<ZORGeoGeometry*>{const_cast<ZORGeoGeometry*>(body->GetGeometry()), body};
    };
    EXPECT_EQ(expected(), rosette->GetOwnedGeometry());
    rosette->SetAxes({1, 2, 3}, {0, 1, 0}, {0, 0, 1});
    EXPECT_EQ(expected(), rosette->GetOwnedGeometry());
    delete rosette->GetBody();
    EXPECT_EQ(1, rosette->GetOwnedGeometry().size());
}

TEST_F(ZORCompRosetteTest, TakesAxesAndSurfaceInOneStep)
{
    auto* const rosette = Add<ZORCompRosette>(layup);
    QSignalSpy bodies(rosette, &ZORFeatGeometry::BodyChanged);
    const ZORGeoSurface* const surface = AddWall();
    // Neither the old axes on the new surface nor the new ones without it would do.
    rosette->SetAxes({0, 1, 1}, {0, 1, 0}, {1, 0, 0}, surface);
    EXPECT_EQ(1, bodies.size());
    EXPECT_EQ(surface, rosette->GetSurface());
    EXPECT_EQ(ZORMathPoint(3, 1, 1), rosette->GetOrigin());
    EXPECT_EQ(ZORMathVector(1, 0, 0), rosette->GetNormal());
    EXPECT_EQ(1, surface->GetReferenceCount());
    EXPECT_EQ(QString("the X axis of the rosette is perpendicular to the surface"), MessageOf([&] {
                  rosette->SetAxes({}, {1, 0, 0}, {0, 0, 1}, surface);
              }));
    EXPECT_EQ(ZORMathPoint(0, 1, 1), rosette->GetGivenOrigin());
    rosette->SetAxes({}, {1, 0, 0}, {0, 0, 1}, nullptr);
    EXPECT_EQ(ZORMathVector(0, 0, 1), rosette->GetNormal());
    EXPECT_EQ(0, surface->GetReferenceCount());
}

} // namespace
