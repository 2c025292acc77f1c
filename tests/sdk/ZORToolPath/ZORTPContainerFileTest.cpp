// Tests that courses come back from container files.

#include "support/ContainerFiles.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORToolPath/ZORTPCourse.h>
#include <ZORWireframe/ZORWFRawCurve.h>

#include <QSignalSpy>

namespace {

class ZORTPContainerFileTest : public testing::Test
{
protected:
    ZORTPContainerFileTest()
        : surface(new ZORGeoSurface(&container,
                                    {{-300, -300, 0}, {300, -300, 0}, {300, 300, 0}, {-300, 300, 0}},
                                    {{0, 1, 2}, {0, 2, 3}}))
        , course(new ZORTPCourse(
              container.GetFeatureRoot("ZORFeatRoot"),
              {surface->Project({-200, 0, 0}), surface->Project({0, 0, 0}), surface->Project({100, 170, 0})},
              6.35))
    {
        surface->Initialize();
        course->SetLabel("tow 1");
        course->Initialize();
    }
    ZORTPCourse* LoadedCourse() const
    {
        for (int i = 0; i < loaded.GetNumGeometry(); ++i) {
            if (auto* const found = qobject_cast<ZORTPCourse*>(loaded.GetGeometryByIndex(i)))
                return found;
        }
        return nullptr;
    }

    ZORFeatContainer container;
    ZORFeatContainer loaded;
    ZORGeoSurface* surface;
    ZORTPCourse* course;
};

TEST_F(ZORTPContainerFileTest, ACourseKeepsWidthCentreLineAndBody)
{
    ASSERT_TRUE(RoundTrips(container, loaded));
    ZORTPCourse* const copy = LoadedCourse();
    ASSERT_TRUE(copy);
    EXPECT_EQ(6.35, copy->GetWidth());
    EXPECT_EQ(QString("tow 1"), copy->GetLabel());
    ASSERT_TRUE(copy->GetCenterLine() && copy->GetSurface() && copy->GetBody());
    EXPECT_EQ(course->GetCenterLine()->GetLength(), copy->GetCenterLine()->GetLength());
    EXPECT_EQ(copy->GetCenterLine(), copy->GetBody()->GetGeometry());
    EXPECT_EQ(&loaded, copy->GetSurface()->GetContainer());
}

TEST_F(ZORTPContainerFileTest, ALoadedCourseCanBeSmoothedAndRemoved)
{
    ASSERT_TRUE(RoundTrips(container, loaded));
    ZORTPCourse* const copy = LoadedCourse();
    QSignalSpy changes(copy, &ZORFeatGeometry::BodyChanged);
    const int before = loaded.GetNumGeometry();
    course->Smooth(50);
    copy->Smooth(50);
    EXPECT_EQ(1, changes.size());
    EXPECT_EQ(course->GetCenterLine()->GetLength(), copy->GetCenterLine()->GetLength());
    EXPECT_EQ(before, loaded.GetNumGeometry());
    copy->Remove();
    EXPECT_EQ(before - 3, loaded.GetNumGeometry());
}

TEST_F(ZORTPContainerFileTest, ASmoothedCourseKeepsItsNewCenterLineAndBody)
{
    course->Smooth(50);
    ASSERT_TRUE(RoundTrips(container, loaded));
    const ZORTPCourse* const copy = LoadedCourse();
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->GetCenterLine(), loaded.GetGeometryByIndex(2)) << "behind the root and the surface";
    EXPECT_EQ(copy->GetBody(), loaded.GetGeometryByIndex(3));
    EXPECT_EQ(copy, loaded.GetGeometryByIndex(4));
    EXPECT_EQ(1, copy->GetBody()->GetReferenceCount());
    EXPECT_EQ(course->GetCenterLine()->GetPoints(), copy->GetBody()->GetEdge(0).GetPoints());
    const auto expected = course->GetCenterLine()->GetLocations();
    const auto locations = copy->GetCenterLine()->GetLocations();
    ASSERT_EQ(expected.size(), locations.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected[i].triangle, locations[i].triangle);
        EXPECT_EQ(expected[i].weightB, locations[i].weightB);
        EXPECT_EQ(expected[i].weightC, locations[i].weightC);
        EXPECT_EQ(expected[i].point, locations[i].point);
    }
}

TEST_F(ZORTPContainerFileTest, SmoothingReportsAChangeOfTheContainerOnce)
{
    EXPECT_TRUE(ReportsNoChange(container, [&] { course->Smooth(0); }));
    EXPECT_TRUE(ReportsChange(container, [&] { course->Smooth(50); }));
    EXPECT_TRUE(ReportsNoChange(container, [&] { course->Smooth(50); }));
}

TEST_F(ZORTPContainerFileTest, LoadedUsersOfTheCenterLineFollowIt)
{
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    (new ZORTopBody(&container, line, 0.1))->Initialize();
    (new ZORWFRawCurve(container.GetFeatureRoot("ZORFeatRoot"), line))->Initialize();
    (new ZORGeoPointOnCurve(line->GetLocation(200, nullptr)))->Initialize();
    ASSERT_TRUE(RoundTrips(container, loaded));
    const auto* const body = qobject_cast<const ZORTopBody*>(loaded.GetGeometryByIndex(5));
    const auto* const raw = qobject_cast<const ZORWFRawCurve*>(loaded.GetGeometryByIndex(7));
    const auto* const point = qobject_cast<const ZORGeoPointOnCurve*>(loaded.GetGeometryByIndex(8));
    ASSERT_TRUE(body && raw && point);
    ASSERT_EQ(2, body->GetNumEdges());
    QSignalSpy changes(raw, &ZORFeatGeometry::BodyChanged);
    LoadedCourse()->Smooth(50);
    course->Smooth(50);
    EXPECT_EQ(1, body->GetNumEdges()) << "by the tolerance that was saved";
    EXPECT_EQ(line->GetPoints(), body->GetEdge(0).GetPoints());
    EXPECT_EQ(line->GetPoints(), raw->GetBody()->GetEdge(0).GetPoints());
    EXPECT_EQ(1, changes.size());
    EXPECT_EQ(line->GetLocation(200, nullptr).point, point->GetMathPoint());
    EXPECT_NE(ZORMathPoint(), point->GetMathPoint());
}

TEST_F(ZORTPContainerFileTest, ACourseThatHasLostItsSurfaceOrBodyIsSavedWithoutIt)
{
    delete surface;
    EXPECT_TRUE(RoundTrips(container, loaded));
    EXPECT_EQ(course->GetCenterLine()->GetLength(), LoadedCourse()->GetCenterLine()->GetLength());
    delete course->GetBody();
    loaded.Clear();
    EXPECT_TRUE(RoundTrips(container, loaded));
    EXPECT_FALSE(LoadedCourse()->GetBody());
    delete course->GetCenterLine();
    loaded.Clear();
    EXPECT_TRUE(RoundTrips(container, loaded));
    EXPECT_FALSE(LoadedCourse()->GetCenterLine());
}

TEST_F(ZORTPContainerFileTest, RefusesAWidthThatIsNone)
{
    QByteArray document = OpenContainerFile(SaveContainer(container));
    const qsizetype width = document.indexOf("width\xfb") + 6;
    document.replace(width, 8, QByteArray("\xc0\x19\x66\x66\x66\x66\x66\x66", 8)); // -6.35
    EXPECT_TRUE(LoadFailure(loaded, SealContainerFile(document)).endsWith("width is not a positive number"));
    EXPECT_EQ(0, loaded.GetNumGeometry());
}

TEST_F(ZORTPContainerFileTest, SurvivesDamageBehindTheChecksum)
{
    const int failed = LoadDamagedFiles(
        SaveContainer(container), [] { return std::make_unique<ZORFeatContainer>(); }, 2000, 6);
    EXPECT_GT(failed, 500);
    EXPECT_LT(failed, 2000) << "some damage only changes values";
}

} // namespace
