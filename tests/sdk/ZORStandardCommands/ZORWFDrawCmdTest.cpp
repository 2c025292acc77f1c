// Tests of the commands that draw by clicks on surfaces.

#include "StandardCommandsTest.h"
#include "support/MessageOf.h"
#include "support/PickAnswerer.h"

#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORToolPath/ZORTPCourse.h>
#include <ZORTopology/ZORTopBody.h>

#include <QAction>
#include <QSignalSpy>

#include <cmath>
#include <memory>

namespace {

constexpr const char* kPoints = "ZORWFDrawCmd.CreatePoints";
constexpr const char* kLine = "ZORWFDrawCmd.CreateLine";
constexpr const char* kPolyline = "ZORWFDrawCmd.CreatePolyline";

class ZORWFDrawCmdTest : public StandardCommandsTest
{
protected:
    ~ZORWFDrawCmdTest() override { ProcessEvents(); }

    void Draw(const char* id)
    {
        GetAction(id)->trigger();
        ASSERT_NE(answerer->request, nullptr);
    }
    bool Click(double x, double y) { return ClickOn(surface, {x, y, 0}); }
    bool ClickOn(ZORGeoSurface* clicked, const ZORMathPoint& point)
    {
        return answerer->request->Answer({clicked, point, clicked->Project(point)});
    }
    ZORGeoSurface* AddSquareAt(double z)
    {
        const QList<ZORMathPoint> corners{{0, 0, z}, {100, 0, z}, {100, 100, z}, {0, 100, z}};
        auto* const square =
            new ZORGeoSurface(container, corners, QList<ZORGeoSurface::Corners>{{0, 1, 2}, {0, 2, 3}});
        square->Initialize();
        return square;
    }

    ZORGeoSurface* const surface = AddSquare("Skin");
    std::unique_ptr<PickAnswerer> answerer = std::make_unique<PickAnswerer>();
};

TEST_F(ZORWFDrawCmdTest, CreatesAPointOnItsSurfaceForEachClick)
{
    Draw(kPoints);
    EXPECT_EQ(answerer->request->GetKinds(), ZORCmdPickRequest::Kinds(ZORCmdPickRequest::SurfaceLocations));
    EXPECT_TRUE(Click(10, 20));
    EXPECT_TRUE(Click(30, 40));
    EXPECT_TRUE(Click(30, 40)) << "a double click is one";
    EXPECT_TRUE(Click(50, 60));
    EXPECT_EQ(answerer->request->GetPreview().size(), 3);
    answerer->request->TakeBack();
    EXPECT_EQ(answerer->request->GetPreview().size(), 2);
    EXPECT_TRUE(GetAll<ZORGeoPointOnSurface>().isEmpty()) << "not before the end";
    answerer->request->Complete();
    const QList<ZORGeoPointOnSurface*> points = GetAll<ZORGeoPointOnSurface>();
    ASSERT_EQ(points.size(), 2);
    EXPECT_EQ(points[0]->objectName(), QString("Point 1"));
    EXPECT_EQ(points[1]->objectName(), QString("Point 2"));
    EXPECT_EQ(points[1]->GetMathPoint(), ZORMathPoint(30, 40, 0));
    EXPECT_EQ(points[1]->GetSurface(), surface);
    Draw(kPoints);
    Click(1, 1);
    answerer->request->Complete();
    EXPECT_EQ(GetAll<ZORGeoPointOnSurface>().constLast()->objectName(), QString("Point 3"));
}

TEST_F(ZORWFDrawCmdTest, SecondClickCreatesALineOverTheSurface)
{
    Draw(kLine);
    Click(80, 10);
    EXPECT_EQ(answerer->request->GetPreview().size(), 1) << "a mark";
    Click(10, 80);
    EXPECT_EQ(answerer->request, nullptr);
    const auto* const line = GetOnly<ZORGeoCurveOnSurface>();
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->objectName(), QString("Line 1"));
    EXPECT_EQ(line->GetNumPoints(), 3) << "over the diagonal";
    EXPECT_NEAR(line->GetLength(), 70 * std::sqrt(2.0), 1e-9);
    EXPECT_EQ(line->GetSurface(), surface);
}

TEST_F(ZORWFDrawCmdTest, PolylineFollowsTheSurfaceAndServesAsCenterLine)
{
    Draw(kPolyline);
    Click(80, 10);
    Click(10, 80);
    Click(90, 90);
    Click(5, 95);
    EXPECT_EQ(answerer->request->GetPreview().size(), 3) << "a path for each pair of clicks";
    answerer->request->TakeBack();
    EXPECT_EQ(answerer->request->GetPreview().size(), 2);
    answerer->request->Complete();
    const auto* const curve = GetOnly<ZORGeoCurveOnSurface>();
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->objectName(), QString("Polyline 1"));
    EXPECT_NEAR(curve->GetLength(), 70 * std::sqrt(2.0) + std::hypot(80.0, 10.0), 1e-9);
    const QList<ZORGeoLocationOnSurface> locations = curve->GetLocations();
    for (int i = 0; i + 1 < locations.size(); ++i) {
        ZORMathPoint a, b, c;
        surface->GetVertices(locations[i].triangle, a, b, c);
        const double side = locations[i].triangle == 1 ? -1 : 1; // of the diagonal
        EXPECT_GE(side * (locations[i + 1].point.GetY() - locations[i + 1].point.GetX()), -1e-9)
            << "each segment is within the triangle of its location: " << i;
    }
    Open("ZORTPCourseCmd.Create");
    EXPECT_EQ(GetEntry("_CurveCombo"), QString("Polyline 1"));
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetAll<ZORTPCourse>().size(), 1);
}

TEST_F(ZORWFDrawCmdTest, IsStraightBetweenSurfaces)
{
    ZORGeoSurface* const above = AddSquareAt(50);
    Draw(kPolyline);
    Click(80, 10);
    Click(10, 80);
    ClickOn(above, {10, 80, 50});
    answerer->request->Complete();
    EXPECT_TRUE(GetAll<ZORGeoCurveOnSurface>().isEmpty());
    const auto* const polyline = GetOnly<ZORGeoPolyline>();
    ASSERT_NE(polyline, nullptr);
    EXPECT_EQ(polyline->GetNumPoints(), 4) << "over the diagonal, then up";
    EXPECT_NEAR(polyline->GetLength(), 70 * std::sqrt(2.0) + 50, 1e-9);
}

TEST_F(ZORWFDrawCmdTest, IsStraightBetweenSeparatePartsOfASurface)
{
    auto* const parts =
        new ZORGeoSurface(container, {{0, 0, 9}, {9, 0, 9}, {0, 9, 9}, {50, 50, 9}, {59, 50, 9}, {50, 59, 9}},
                          QList<ZORGeoSurface::Corners>{{0, 1, 2}, {3, 4, 5}});
    parts->Initialize();
    Draw(kLine);
    ClickOn(parts, {1, 1, 9});
    ClickOn(parts, {51, 51, 9});
    EXPECT_TRUE(GetAll<ZORGeoCurveOnSurface>().isEmpty());
    ASSERT_EQ(GetAll<ZORGeoPolyline>().size(), 1);
    EXPECT_NEAR(GetAll<ZORGeoPolyline>().constFirst()->GetLength(), 50 * std::sqrt(2.0), 1e-9);
}

TEST_F(ZORWFDrawCmdTest, CreatesNothingWhenItIsCanceledOrHasTooFewClicks)
{
    const QSignalSpy changes(container, &ZORGeoContainer::ContentChanged);
    for (const char* id : {kPoints, kLine, kPolyline}) {
        Draw(id);
        answerer->request->TakeBack(); // nothing yet
        Click(10, 20);
        answerer->request->Cancel();
        Draw(id);
        answerer->request->Complete();
        Draw(id);
        Click(10, 20);
        answerer->request->TakeBack();
        answerer->request->Complete();
    }
    Draw(kPolyline);
    Click(10, 20);
    answerer->request->Complete();
    EXPECT_EQ(changes.size(), 0);
    EXPECT_EQ(container->GetNumGeometry(), 1);
}

TEST_F(ZORWFDrawCmdTest, TakesClicksOnSurfacesOfItsDocumentOnly)
{
    auto* const hole = AddPoint("Hole", {1, 2, 0});
    ZORFeatContainer other;
    auto* const foreign = new ZORGeoSurface(&other, {{0, 0, 0}, {9, 0, 0}, {0, 9, 0}},
                                            QList<ZORGeoSurface::Corners>{{0, 1, 2}});
    foreign->Initialize();
    Draw(kPoints);
    EXPECT_FALSE(answerer->request->Answer({hole, {1, 2, 0}, surface->Project({1, 2, 0})}));
    EXPECT_FALSE(ClickOn(foreign, {1, 1, 0}));
    answerer->request->Complete();
    EXPECT_TRUE(GetAll<ZORGeoPointOnSurface>().isEmpty());
}

TEST_F(ZORWFDrawCmdTest, EndsWithItsSurfaceItsDocumentItsViewAndItsLibrary)
{
    ZORGeoSurface* const above = AddSquareAt(50);
    Draw(kPolyline);
    Click(10, 20);
    ClickOn(above, {10, 80, 50});
    AddPoint("Other", {1, 2, 3})->Remove();
    EXPECT_NE(answerer->request, nullptr) << "unused geometry may go";
    delete above;
    EXPECT_EQ(answerer->request, nullptr);
    Draw(kPoints);
    Click(10, 20);
    EXPECT_TRUE(library.unload());
    EXPECT_EQ(answerer->request, nullptr);
    EXPECT_TRUE(library.load());
    Draw(kPoints);
    Click(10, 20);
    answerer.reset();
    ProcessEvents();
    EXPECT_EQ(MessageOf([] { GetAction(kLine)->trigger(); }), QString("there is no view to pick in"));
    answerer = std::make_unique<PickAnswerer>();
    Draw(kPoints);
    Click(10, 20);
    environment.reset();
    EXPECT_EQ(answerer->request, nullptr);
    EXPECT_EQ(MessageOf([] { GetAction(kLine)->trigger(); }), QString("there is no current environment"));
}

} // namespace
