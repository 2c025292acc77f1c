// Tests of ZORTPCourse.

#include "CourseTest.h"
#include "support/ContainerContent.h"
#include "support/TraceCalls.h"

#include <QSignalSpy>

#include <algorithm>
#include <limits>
#include <memory>
#include <stdexcept>

namespace {

class ZORTPCourseTest : public CourseTest
{
protected:
};

TEST_F(ZORTPCourseTest, BringsItsCentreLineAndABodyOfDimensionOneIntoTheContainer)
{
    const ZORTPCourse* const course = Add();
    EXPECT_EQ(GetNames(container, numBefore), (QStringList{"CurveOnSurface.1", "Body.1", "Course.1"}));
    ASSERT_TRUE(course->GetBody());
    EXPECT_EQ(course->GetBody()->GetDimension(), 1);
    EXPECT_EQ(course->GetBody()->GetGeometry(), course->GetCenterLine());
    EXPECT_EQ(course->GetOwnedGeometry(),
              (QList<ZORGeoGeometry*>{const_cast<ZORGeoCurveOnSurface*>(course->GetCenterLine()),
                                      course->GetBody()}));
    EXPECT_EQ(course->GetSurface(), surface);
    EXPECT_EQ(course->GetWidth(), 6.35);
    EXPECT_EQ(course->GetParentFeature(), folder);
    EXPECT_EQ(course->GetLabel(), QStringLiteral("Course.1"));
    EXPECT_TRUE(container.GetRegisteredTypes().contains(&ZORTPCourse::staticMetaObject));
}

TEST_F(ZORTPCourseTest, CopiesACurveAndLeavesItAlone)
{
    const ZORGeoCurveOnSurface source(Corner(), false);
    const ZORTPCourse course(folder, &source, 10);
    ASSERT_TRUE(course.GetCenterLine());
    EXPECT_NE(course.GetCenterLine(), &source);
    ASSERT_EQ(course.GetCenterLine()->GetNumPoints(), source.GetNumPoints());
    for (int i = 0; i < source.GetNumPoints(); ++i)
        EXPECT_EQ(course.GetCenterLine()->GetPoint(i), source.GetPoint(i));
}

TEST_F(ZORTPCourseTest, TakesShortestWaysBetweenPlacesOfDifferentTriangles)
{
    const ZORTPCourse course(folder, {surface->Project({250, -200, 0}), surface->Project({-200, 250, 0})},
                             10);
    EXPECT_EQ(course.GetCenterLine()->GetNumPoints(), 3) << "over the diagonal";
    EXPECT_NEAR(course.GetCenterLine()->GetLength(), 450 * std::sqrt(2.0), 1e-9);
}

TEST_F(ZORTPCourseTest, RefusesWhatMakesNoCourse)
{
    const auto messageOf = [&](const QList<ZORGeoLocationOnSurface>& locations, double width) {
        return MessageOf([&] { ZORTPCourse(folder, locations, width); });
    };
    for (const double width : {0.0, -1.0, std::nan(""), double(INFINITY)})
        EXPECT_EQ(messageOf(Corner(), width), QStringLiteral("width is not a positive number")) << width;
    EXPECT_EQ(messageOf({}, 1), QStringLiteral("a course needs two places"));
    EXPECT_EQ(messageOf({surface->Project({0, 0, 0})}, 1), QStringLiteral("a course needs two places"));
    EXPECT_EQ(messageOf({surface->Project({0, 0, 0}), {}}, 1),
              QStringLiteral("location 1 of the curve is not on a surface"));
    EXPECT_EQ(MessageOf([&] { ZORTPCourse(folder, static_cast<ZORGeoCurveOnSurface*>(nullptr), 1); }),
              QStringLiteral("centre line is null"));
    ZORGeoContainer other;
    const std::unique_ptr<ZORGeoSurface> foreign(MakeSquare(&other));
    EXPECT_EQ(messageOf({foreign->Project({0, 0, 0}), foreign->Project({1, 0, 0})}, 1),
              QStringLiteral("surface is in another container"));
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
}

TEST_F(ZORTPCourseTest, SmoothsInPlace)
{
    ZORTPCourse* const course = Add();
    int changes = 0;
    QObject::connect(course, &ZORFeatGeometry::BodyChanged, course, [&] { ++changes; });
    course->Smooth(100);
    EXPECT_EQ(changes, 1);
    ASSERT_TRUE(course->GetBody());
    EXPECT_TRUE(course->GetBody()->IsInitialized());
    EXPECT_TRUE(course->GetCenterLine()->IsInitialized());
    EXPECT_EQ(course->GetBody()->GetGeometry(), course->GetCenterLine());
    EXPECT_EQ(course->GetBody()->GetReferenceCount(), 1);
    EXPECT_NEAR(course->GetCenterLine()->GetLength(), 400 - 2 * 57.735027 + 104.719755, 3e-5);
    EXPECT_EQ(course->GetLabel(), QStringLiteral("Course.1"));
    EXPECT_EQ(folder->GetChildren(), QList<ZORFeatObject*>{course});
    EXPECT_EQ(container.GetNumGeometry(), numBefore + 3);
}

TEST_F(ZORTPCourseTest, SmoothsWithProgress)
{
    ZORTPCourse* const course = Add();
    ZORTPCourse* const other = Add();
    course->Smooth(100);
    QList<double> reports;
    EXPECT_TRUE(other->Smooth(100, [&](double progress) {
        reports.append(progress);
        return true;
    }));
    ASSERT_EQ(other->GetCenterLine()->GetNumPoints(), course->GetCenterLine()->GetNumPoints());
    for (int i = 0; i < course->GetCenterLine()->GetNumPoints(); ++i)
        EXPECT_EQ(other->GetCenterLine()->GetPoint(i), course->GetCenterLine()->GetPoint(i));
    EXPECT_EQ(reports.constFirst(), 0);
    EXPECT_EQ(reports.constLast(), 1);
    EXPECT_TRUE(std::is_sorted(reports.constBegin(), reports.constEnd()));
}

TEST_F(ZORTPCourseTest, StaysAsItIsWhenSmoothingIsCanceled)
{
    ZORTPCourse* const course = Add();
    int changes = 0;
    QObject::connect(course, &ZORFeatGeometry::BodyChanged, course, [&] { ++changes; });
    // At once, and after all has been computed.
    EXPECT_FALSE(course->Smooth(100, [](double) { return false; }));
    EXPECT_FALSE(course->Smooth(100, [](double progress) { return progress < 1; }));
    EXPECT_THROW(course->Smooth(100, [](double) -> bool { throw std::runtime_error("stop"); }),
                 std::runtime_error);
    EXPECT_EQ(course->GetCenterLine()->GetNumPoints(), Corner().size());
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(MessageOf([&] { course->Smooth(-1, [](double) { return false; }); }),
              QStringLiteral("radius is negative"));
    EXPECT_TRUE(course->Smooth(100, {}));
    EXPECT_EQ(changes, 1);
}

TEST_F(ZORTPCourseTest, LeavesASmoothCourseAsItIs)
{
    ZORTPCourse* const course = Add();
    int changes = 0;
    QObject::connect(course, &ZORFeatGeometry::BodyChanged, course, [&] { ++changes; });
    const ZORGeoCurveOnSurface* line = course->GetCenterLine();
    for (const double radius : {0.0, -0.0, std::nan("")}) {
        course->Smooth(radius);
        EXPECT_EQ(course->GetCenterLine(), line) << radius;
    }
    course->Smooth(100);
    line = course->GetCenterLine();
    for (const double radius : {100.0, 50.0}) {
        course->Smooth(radius);
        EXPECT_EQ(course->GetCenterLine(), line) << radius;
    }
    EXPECT_EQ(changes, 1);
}

TEST_F(ZORTPCourseTest, SmoothsBeforeItIsRegistered)
{
    ZORTPCourse course(folder, Corner(), 10);
    course.Smooth(100);
    EXPECT_FALSE(course.GetBody()->IsInitialized());
    EXPECT_GT(course.GetCenterLine()->GetNumPoints(), 100);
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
}

TEST_F(ZORTPCourseTest, RefusesToSmoothWithARadiusThatIsNone)
{
    ZORTPCourse* const course = Add();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    EXPECT_EQ(MessageOf([&] { course->Smooth(-1); }), QStringLiteral("radius is negative"));
    EXPECT_EQ(MessageOf([&] { course->Smooth(INFINITY); }), QStringLiteral("radius is infinite"));
    EXPECT_EQ(course->GetCenterLine(), line);
}

TEST_F(ZORTPCourseTest, StaysAsItIsWhereTheSurfaceHasNoRoom)
{
    ZORTPCourse* const course = AddWithoutRoom();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    int changes = 0;
    QObject::connect(course, &ZORFeatGeometry::BodyChanged, course, [&] { ++changes; });
    EXPECT_EQ(MessageOf([&] { course->Smooth(2); }),
              QStringLiteral("the surface has no room for the radius 2 at (1, 1, 0)"));
    EXPECT_EQ(course->GetCenterLine(), line);
    EXPECT_EQ(line->GetNumPoints(), 3);
    EXPECT_EQ(changes, 0);
}

TEST_F(ZORTPCourseTest, OutlivesItsSurfaceAndItsCentreLine)
{
    ZORTPCourse* const course = Add();
    delete surface;
    EXPECT_EQ(course->GetSurface(), nullptr);
    EXPECT_EQ(course->GetCenterLine()->GetNumPoints(), 3);
    EXPECT_EQ(MessageOf([&] { course->Smooth(100); }),
              QStringLiteral("the surface of the course does not exist any more"));
    delete course->GetCenterLine();
    EXPECT_EQ(course->GetCenterLine(), nullptr);
    EXPECT_EQ(course->GetBody()->GetDimension(), ZORTopBody::EmptyDimension);
    EXPECT_EQ(MessageOf([&] { course->Smooth(100); }), QStringLiteral("the course has no centre line"));
}

TEST_F(ZORTPCourseTest, RemoveUndoesEverything)
{
    ZORTPCourse* const course = Add();
    course->Smooth(100);
    course->Remove();
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
    EXPECT_EQ(surface->GetReferenceCount(), 0);
}

TEST_F(ZORTPCourseTest, ShowsItsCallsInTheTrace)
{
    folder->setObjectName("F");
    const QStringList lines = TraceCalls([this] {
        auto* const course = new ZORTPCourse(folder, Corner().mid(0, 2), 6.5);
        course->Initialize();
        course->Smooth(0);
    });
    EXPECT_TRUE(lines.contains(QStringLiteral("ZORTPCourse::ZORTPCourse(<F>, [2], 6.5)")))
        << lines.join('\n').toStdString();
    EXPECT_EQ(lines.mid(lines.size() - 2),
              (QStringList{"ZORTPCourse::Initialize()", "ZORTPCourse::Smooth(0)"}));
}

TEST_F(ZORTPCourseTest, TakesAnotherWidth)
{
    ZORTPCourse* const course = Add();
    QSignalSpy changes(&container, &ZORGeoContainer::ContentChanged);
    course->SetWidth(12.7);
    EXPECT_EQ(course->GetWidth(), 12.7);
    EXPECT_EQ(changes.size(), 1);
    course->SetWidth(12.7);
    EXPECT_EQ(changes.size(), 1);
    for (const double width : {0.0, -1.0, std::nan(""), double(INFINITY)})
        EXPECT_EQ(MessageOf([&] { course->SetWidth(width); }), QString("width is not a positive number"));
    EXPECT_EQ(course->GetWidth(), 12.7);
}

TEST_F(ZORTPCourseTest, TakesAnotherCenterLineInPlace)
{
    ZORTPCourse* const course = Add();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    const ZORTopBody* const body = course->GetBody();
    QSignalSpy bodies(course, &ZORFeatGeometry::BodyChanged);
    course->SetCenterLine({surface->Project({250, -200, 0}), surface->Project({-200, 250, 0})});
    EXPECT_EQ(course->GetCenterLine(), line);
    EXPECT_EQ(course->GetBody(), body);
    EXPECT_EQ(bodies.size(), 1);
    EXPECT_EQ(line->GetNumPoints(), 3) << "over the diagonal";
    EXPECT_NEAR(line->GetLength(), 450 * std::sqrt(2.0), 1e-9);
}

TEST_F(ZORTPCourseTest, RefusesACenterLineThatDoesNotFit)
{
    ZORTPCourse* const course = Add();
    const double length = course->GetCenterLine()->GetLength();
    const auto messageOf = [course](const QList<ZORGeoLocationOnSurface>& locations) {
        return MessageOf([&] { course->SetCenterLine(locations); });
    };
    EXPECT_EQ(messageOf({}), QString("a course needs two places"));
    EXPECT_EQ(messageOf({surface->Project({0, 0, 0})}), QString("a course needs two places"));
    ZORGeoSurface* const other = MakeSquare(&container);
    other->Initialize();
    EXPECT_NE(messageOf({other->Project({0, 0, 0}), other->Project({9, 0, 0})}), QString());
    EXPECT_EQ(course->GetCenterLine()->GetLength(), length);
    const QList<ZORGeoLocationOnSurface> corner = Corner();
    delete surface;
    EXPECT_EQ(messageOf(corner), QString("the surface of the course does not exist any more"));
    delete const_cast<ZORGeoCurveOnSurface*>(course->GetCenterLine());
    EXPECT_EQ(messageOf({}), QString("the course has no centre line"));
}

} // namespace
