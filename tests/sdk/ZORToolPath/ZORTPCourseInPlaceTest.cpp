// Tests that a course changes in place: everything that uses its center line follows.

#include "CourseTest.h"
#include "support/ContainerContent.h"

#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORWireframe/ZORWFCurveOnSupport.h>
#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawPoint.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <QSignalSpy>

#include <numbers>
#include <random>

namespace {

class ZORTPCourseInPlaceTest : public CourseTest
{
protected:
    ZORGeoPointOnCurve* AddPoint(const ZORGeoCurve* curve, double distance)
    {
        return Register(new ZORGeoPointOnCurve(curve->GetLocation(distance, nullptr)));
    }
    /// The points along all edges of the body of an open curve.
    static ZORMathSetOfPoints PointsOf(const ZORTopBody& body)
    {
        ZORMathSetOfPoints points = body.GetEdge(0).GetPoints();
        for (int edge = 1; edge < body.GetNumEdges(); ++edge)
            points.append(body.GetEdge(edge).GetPoints().mid(1));
        return points;
    }
    /// Name, address and reference count of every geometry, in the order of the container.
    QStringList Describe() const
    {
        QStringList lines;
        for (int i = 0; i < container.GetNumGeometry(); ++i) {
            const ZORGeoGeometry* const geometry = container.GetGeometryByIndex(i);
            lines.append(QString("%1 %2 %3")
                             .arg(geometry->objectName(), QString::number(quintptr(geometry), 16),
                                  QString::number(geometry->GetReferenceCount())));
        }
        return lines;
    }
};

TEST_F(ZORTPCourseInPlaceTest, KeepsObjectsNamesOrderAndReferences)
{
    ZORTPCourse* const course = Add();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    const ZORTopBody* const body = course->GetBody();
    Register(new ZORWFRawCurve(folder, line));
    AddPoint(line, 100);
    const QStringList before = Describe();
    QSignalSpy added(&container, &ZORGeoContainer::GeometryAdded);
    QSignalSpy announced(&container, &ZORGeoContainer::GeometryAboutToBeRemoved);
    QSignalSpy removed(&container, &ZORGeoContainer::GeometryRemoved);
    for (const double radius : {50.0, 100.0}) {
        course->Smooth(radius);
        EXPECT_EQ(before, Describe()) << radius;
        EXPECT_EQ(line, course->GetCenterLine());
        EXPECT_EQ(body, course->GetBody());
    }
    EXPECT_EQ(0, added.size() + announced.size() + removed.size());
    EXPECT_NEAR(400 - 2 * 57.735027 + 104.719755, line->GetLength(), 3e-5);
    EXPECT_EQ(line->GetPoints(), body->GetEdge(0).GetPoints());
}

TEST_F(ZORTPCourseInPlaceTest, ARawCurveOfTheCenterLineFollows)
{
    ZORTPCourse* const course = Add();
    auto* const raw = Register(new ZORWFRawCurve(folder, course->GetCenterLine()));
    const ZORTopBody* const body = raw->GetBody();
    QSignalSpy changes(raw, &ZORFeatGeometry::BodyChanged);
    course->Smooth(100);
    EXPECT_EQ(1, changes.size());
    ASSERT_EQ(body, raw->GetBody());
    ASSERT_EQ(1, body->GetDimension());
    EXPECT_EQ(course->GetCenterLine(), body->GetGeometry());
    ASSERT_EQ(1, body->GetNumEdges());
    EXPECT_EQ(course->GetCenterLine()->GetPoints(), body->GetEdge(0).GetPoints());
    EXPECT_GT(body->GetEdge(0).GetPoints().size(), 100);
}

TEST_F(ZORTPCourseInPlaceTest, BodiesAreDividedAgainByTheirOwnTolerance)
{
    ZORTPCourse* const course = Add();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    const auto* const body = Register(new ZORTopBody(&container, line, 0.1));
    const auto* const fine = Register(new ZORTopBody(&container, line, 1e-4));
    ASSERT_EQ(2, body->GetNumEdges());
    ASSERT_EQ(3, body->GetNumVertices());
    course->Smooth(100);
    EXPECT_EQ(1, body->GetNumEdges()) << "the corner is gone";
    ASSERT_EQ(2, body->GetNumVertices());
    EXPECT_EQ(line->GetPoint(line->GetNumPoints() - 1), body->GetVertex(1).GetPoint());
    EXPECT_EQ(line->GetPoints(), body->GetEdge(0).GetPoints());
    EXPECT_GT(fine->GetNumEdges(), 100) << "the chords of the arc turn by more than its tolerance";
}

TEST_F(ZORTPCourseInPlaceTest, PointsKeepTheirDistanceWithinTheNewLength)
{
    ZORTPCourse* const course = Add();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    QList<ZORGeoPointOnCurve*> points;
    const QList<double> distances{0, 100, 200, 395, 400, 410, -5};
    for (const double distance : distances)
        points.append(AddPoint(line, distance));
    course->Smooth(100);
    const double length = line->GetLength();
    ASSERT_LT(length, 395);
    for (qsizetype i = 0; i < points.size(); ++i) {
        const ZORGeoLocationOnCurve location = points[i]->GetLocationOnCurve();
        EXPECT_EQ(line, location.curve);
        EXPECT_EQ(std::min(distances[i], length), location.distance);
        EXPECT_EQ(line->GetLocation(location.distance, nullptr).point, points[i]->GetMathPoint());
    }
    EXPECT_EQ(ZORMathPoint(-200, 0, 0), points[0]->GetMathPoint());
    EXPECT_EQ(ZORMathPoint(-100, 0, 0), points[1]->GetMathPoint()) << "the leg is straight there";
    const double turn = 1 / std::sqrt(3.0); // The arc starts 100 / sqrt(3) before the corner.
    EXPECT_NEAR(100 - 100 * std::cos(turn), points[2]->GetMathPoint().GetY(), 1e-3);
    EXPECT_EQ(line->GetPoint(line->GetNumPoints() - 1), points[3]->GetMathPoint());
    EXPECT_EQ(ZORMathPoint(-205, 0, 0), points.last()->GetMathPoint());
}

TEST_F(ZORTPCourseInPlaceTest, PointsOfAClosedCourseStayBeforeItsEnd)
{
    auto* const course =
        Register(new ZORTPCourse(folder,
                                 {surface->Project({-200, -100, 0}), surface->Project({200, -100, 0}),
                                  surface->Project({0, 200, 0}), surface->Project({-200, -100, 0})},
                                 5));
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    ASSERT_TRUE(line->IsClosed());
    const ZORGeoPointOnCurve* const point = AddPoint(line, line->GetLength() - 1);
    course->Smooth(50);
    ASSERT_TRUE(line->IsClosed());
    EXPECT_EQ(line->GetLength(), point->GetLocationOnCurve().distance);
    EXPECT_EQ(ZORMathPoint(-200, -100, 0), point->GetMathPoint());
}

TEST_F(ZORTPCourseInPlaceTest, BodiesOfPointsFollow)
{
    ZORTPCourse* const course = Add();
    const ZORGeoPointOnCurve* const point = AddPoint(course->GetCenterLine(), 200);
    const auto* const body = Register(new ZORTopBody(&container, point));
    course->Smooth(100);
    ASSERT_EQ(0, body->GetDimension());
    EXPECT_NE(ZORMathPoint(), point->GetMathPoint());
    EXPECT_EQ(point->GetMathPoint(), body->GetVertex(0).GetPoint());
}

TEST_F(ZORTPCourseInPlaceTest, FeaturesComputedFromTheCourseAndFromRawCurvesFollow)
{
    ZORTPCourse* const course = Add();
    auto* const raw = Register(new ZORWFRawCurve(folder, course->GetCenterLine()));
    const auto add = [&](ZORFeatGeometry* limit) {
        auto* const curve = new ZORWFCurveOnSupport(folder);
        curve->SetComputationMethod(ZORWFCurveOnSupport::PointDirection);
        curve->SetSupport(Register(new ZORWFRawSurface(folder, surface)));
        curve->SetStartPoint(Register(new ZORWFRawPoint(folder, {0, 100, 0})));
        curve->SetDirection(folder);
        curve->SetAngle(-std::numbers::pi / 2);
        curve->SetStartLength(0);
        curve->AddEndLimit(limit);
        return Register(curve);
    };
    const auto lengthOf = [](const ZORFeatGeometry* feature) {
        return qobject_cast<const ZORGeoCurve*>(feature->GetBody()->GetGeometry())->GetLength();
    };
    const ZORWFCurveOnSupport* const ofCourse = add(course);
    const ZORWFCurveOnSupport* const ofRaw = add(raw);
    EXPECT_NEAR(100, lengthOf(ofRaw), 1e-9);
    course->Smooth(100);
    // The center of the arc is at (-100 / sqrt(3), 100), its radius is 100.
    EXPECT_NEAR(std::sqrt(100 * 100 * 2 / 3.0), lengthOf(ofRaw), 1e-3);
    EXPECT_EQ(lengthOf(ofRaw), lengthOf(ofCourse));
}

TEST_F(ZORTPCourseInPlaceTest, ACourseAlongTheCenterLineOfAnotherKeepsItsOwn)
{
    ZORTPCourse* const course = Add();
    const auto* const copy = Register(new ZORTPCourse(folder, course->GetCenterLine(), 3));
    course->Smooth(100);
    EXPECT_EQ(3, copy->GetCenterLine()->GetNumPoints());
}

TEST_F(ZORTPCourseInPlaceTest, AFailureChangesNothing)
{
    ZORTPCourse* const course = AddWithoutRoom();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    const auto* const raw = Register(new ZORWFRawCurve(folder, line));
    const ZORGeoPointOnCurve* const point = AddPoint(line, 7);
    const QStringList before = Describe();
    QSignalSpy ofCourse(course, &ZORFeatGeometry::BodyChanged);
    QSignalSpy ofRaw(raw, &ZORFeatGeometry::BodyChanged);
    EXPECT_EQ(QString("the surface has no room for the radius 2 at (1, 1, 0)"),
              MessageOf([&] { course->Smooth(2); }));
    EXPECT_EQ(before, Describe());
    EXPECT_EQ((ZORMathSetOfPoints{{8, 1, 0}, {1, 1, 0}, {1, 8, 0}}), line->GetPoints());
    EXPECT_EQ(line->GetPoints(), raw->GetBody()->GetEdge(0).GetPoints());
    EXPECT_EQ(ZORMathPoint(1, 1, 0), point->GetMathPoint());
    EXPECT_EQ(0, ofCourse.size() + ofRaw.size());
}

TEST_F(ZORTPCourseInPlaceTest, ACourseWithoutItsBodyChangesItsCenterLineOnly)
{
    ZORTPCourse* const course = Add();
    delete course->GetBody();
    const QStringList before = Describe();
    course->Smooth(100);
    EXPECT_EQ(before, Describe());
    EXPECT_EQ(nullptr, course->GetBody());
    EXPECT_GT(course->GetCenterLine()->GetNumPoints(), 100);
}

TEST_F(ZORTPCourseInPlaceTest, RandomUsersStayUpToDateWhileTheyComeAndGo)
{
    std::mt19937 random(7);
    const auto below = [&](double limit) { return std::uniform_real_distribution<>(0, limit)(random); };
    for (int round = 0; round < 6; ++round) {
        QList<ZORGeoLocationOnSurface> locations;
        for (int i = 0; i < 6; ++i)
            locations.append(surface->Project({100.0 * i - 250, below(120), 0}));
        auto* const course = Register(new ZORTPCourse(folder, locations, 5));
        const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
        QList<QPointer<const ZORTopBody>> bodies;
        QList<QPointer<const ZORGeoPointOnCurve>> points;
        for (double radius = 2; radius < 40; radius *= 2) {
            for (int i = 0; i < 5; ++i) {
                bodies.append(Register(new ZORTopBody(&container, line, below(0.5))));
                bodies.append(Register(new ZORWFRawCurve(folder, line))->GetBody());
                points.append(AddPoint(line, below(1.1 * line->GetLength()) - 10));
                bodies.append(Register(new ZORTopBody(&container, points.last())));
            }
            delete bodies[qsizetype(below(double(bodies.size())))].data();
            delete points[qsizetype(below(double(points.size())))].data();
            course->Smooth(radius);
            for (const ZORGeoPointOnCurve* point : std::as_const(points)) {
                if (point) {
                    EXPECT_EQ(line->GetLocation(point->GetLocationOnCurve().distance, nullptr).point,
                              point->GetMathPoint());
                }
            }
            for (const ZORTopBody* body : std::as_const(bodies)) {
                const auto* const point =
                    body ? qobject_cast<const ZORGeoPointOnCurve*>(body->GetGeometry()) : nullptr;
                if (point) {
                    EXPECT_EQ(point->GetMathPoint(), body->GetVertex(0).GetPoint());
                } else if (body && body->GetDimension() == 1) {
                    EXPECT_EQ(line->GetPoints(), PointsOf(*body));
                }
            }
        }
        course->Remove();
    }
}

TEST_F(ZORTPCourseInPlaceTest, ReceiversMeetEveryUserUpToDateAndMayRemoveThem)
{
    ZORTPCourse* const course = Add();
    const QPointer<const ZORGeoCurveOnSurface> line = course->GetCenterLine();
    // Bodies that come before and after the raw curve whose change is received.
    const auto* const first = Register(new ZORTopBody(&container, line));
    auto* const raw = Register(new ZORWFRawCurve(folder, line));
    const auto* const last = Register(new ZORTopBody(&container, line));
    const ZORGeoPointOnCurve* const point = AddPoint(line, 200);
    bool isReceived = false;
    QObject::connect(raw, &ZORFeatGeometry::BodyChanged, &container, [&] {
        isReceived = true;
        for (const ZORTopBody* body :
             QList<const ZORTopBody*>{first, last, course->GetBody(), raw->GetBody()})
            EXPECT_EQ(line->GetPoints(), body->GetEdge(0).GetPoints());
        EXPECT_EQ(line->GetLocation(200, nullptr).point, point->GetMathPoint());
        delete first;
        delete last;
        delete point;
        raw->Remove();
        course->Remove();
    });
    course->Smooth(100);
    EXPECT_TRUE(isReceived);
    EXPECT_FALSE(line);
    EXPECT_EQ(numBefore, container.GetNumGeometry());
}

} // namespace
