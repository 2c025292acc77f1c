// Tests of ZORGeoCurveOnSurface.

#include "TestMeshes.h"
#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORSystem/ZORSysException.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class ZORGeoCurveOnSurfaceTest : public testing::Test
{
protected:
    ZORGeoCurveOnSurfaceTest()
        : m_surface(Sheet(4).Make(&m_container).release())
    {
        m_surface->Initialize();
    }

    QList<ZORGeoLocationOnSurface> Locate(const QList<ZORMathPoint>& points) const
    {
        QList<ZORGeoLocationOnSurface> locations;
        for (const ZORMathPoint& point : points)
            locations.append(m_surface->Project(point));
        return locations;
    }

    static QString FailureOf(const QList<ZORGeoLocationOnSurface>& locations)
    {
        try {
            const ZORGeoCurveOnSurface curve(locations, false);
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return "none";
    }

    ZORGeoContainer m_container;
    ZORGeoSurface* m_surface; // owned by the container
};

TEST_F(ZORGeoCurveOnSurfaceTest, GoesThroughItsLocationsAndReferencesTheSurface)
{
    auto* const curve =
        new ZORGeoCurveOnSurface(Locate({{0.1, 0.1, 5}, {0.4, 0.5, -1}, {0.9, 0.5, 0}}), false);
    curve->Initialize();
    EXPECT_EQ("CurveOnSurface.1", curve->objectName());
    EXPECT_EQ(&m_container, curve->GetContainer());
    EXPECT_EQ(1, m_surface->GetReferenceCount());
    EXPECT_EQ(m_surface, curve->GetSurface());
    EXPECT_EQ(3, curve->GetNumPoints());
    EXPECT_EQ(ZORMathPoint(0.4, 0.5, 0), curve->GetPoint(1));
    EXPECT_DOUBLE_EQ(1.0, curve->GetLength());
    EXPECT_EQ(3, curve->GetLocations().size());
    EXPECT_FALSE(curve->IsClosed());
}

TEST_F(ZORGeoCurveOnSurfaceTest, ClosesItselfOnDemand)
{
    const auto corners = Locate({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    const ZORGeoCurveOnSurface open(corners, false);
    EXPECT_EQ(3, open.GetNumPoints());
    EXPECT_FALSE(open.IsClosed());
    const ZORGeoCurveOnSurface closed(corners, true);
    EXPECT_EQ(4, closed.GetNumPoints());
    EXPECT_TRUE(closed.IsClosed());
    const ZORGeoCurveOnSurface again(closed.GetLocations(), true);
    EXPECT_EQ(4, again.GetNumPoints()) << "is closed already";
    EXPECT_EQ(1, ZORGeoCurveOnSurface(corners.first(1), true).GetNumPoints());
    EXPECT_FALSE(ZORGeoCurveOnSurface(corners.first(1), true).IsClosed());
}

TEST_F(ZORGeoCurveOnSurfaceTest, EndsThatDifferByRoundingAreOnePoint)
{
    for (const double size : {1e-6, 1.0, 1e6}) {
        const ZORGeoSurface sheet(&m_container, {{0, 0, 0}, {size, 0, 0}, {0, size, 0}}, {{0, 1, 2}});
        const auto curveTo = [&](double end, bool isClosed) {
            const auto locate = [&](double x, double y) { return sheet.Project({size * x, size * y, 0}); };
            return ZORGeoCurveOnSurface({locate(0, 0), locate(0.5, 0), locate(0, 0.5), locate(0, end)},
                                        isClosed);
        };
        EXPECT_TRUE(curveTo(1e-14, false).IsClosed()) << size;
        EXPECT_TRUE(curveTo(1e-10, false).IsClosed()) << size;
        EXPECT_EQ(4, curveTo(1e-14, true).GetNumPoints()) << "is closed already";
        EXPECT_FALSE(curveTo(1e-7, false).IsClosed()) << size;
        EXPECT_EQ(5, curveTo(1e-7, true).GetNumPoints()) << size;
    }
}

TEST_F(ZORGeoCurveOnSurfaceTest, MayBeEmptyButHasNoContainerThen)
{
    ZORGeoCurveOnSurface curve({}, false);
    EXPECT_EQ(0, curve.GetNumPoints());
    EXPECT_EQ(0, curve.GetLength());
    EXPECT_EQ(nullptr, curve.GetSurface());
    EXPECT_TRUE(curve.GetLocation(1, nullptr).IsNull());
    ZORGeoLocationOnCurve location;
    EXPECT_FALSE(curve.Project({0, 0, 0}, location));
    EXPECT_THROW(curve.Initialize(), ZORSysException);
}

TEST_F(ZORGeoCurveOnSurfaceTest, RefusesLocationsOfNoOrAnotherSurface)
{
    auto locations = Locate({{0, 0, 0}, {1, 0, 0}});
    locations.append(ZORGeoLocationOnSurface());
    EXPECT_EQ("location 2 of the curve is not on a surface", FailureOf(locations));
    const auto cube = Cube().Make();
    locations[2] = cube->Project({0, 0, 0});
    EXPECT_EQ("location 2 of the curve is on another surface", FailureOf(locations));
    locations[2] = locations[1];
    locations[2].point.SetX(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ("point 2 of the curve is not finite or too far away", FailureOf(locations));
    EXPECT_EQ(0, m_surface->GetReferenceCount());
}

TEST_F(ZORGeoCurveOnSurfaceTest, ChangesInPlace)
{
    auto* const curve = new ZORGeoCurveOnSurface(Locate({{0, 0, 0}, {1, 0, 0}}), false);
    curve->Initialize();
    ZORGeoLocationOnCurve location;
    ASSERT_TRUE(curve->Project({0.5, 1, 0}, location)); // builds what is kept for searching
    QSignalSpy changes(curve, &ZORGeoGeometry::ShapeChanged);
    QSignalSpy reports(&m_container, &ZORGeoContainer::ContentChanged);
    const auto locations = Locate({{0, 1, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}});
    curve->SetLocations(locations);
    EXPECT_EQ(1, changes.size());
    EXPECT_EQ(1, reports.size());
    EXPECT_EQ(4, curve->GetNumPoints());
    EXPECT_DOUBLE_EQ(2 + std::sqrt(2.0), curve->GetLength());
    EXPECT_EQ(ZORMathPoint(0, 0, 0), curve->GetBoundingBox().GetLowerPoint());
    EXPECT_EQ(ZORMathPoint(1, 1, 0), curve->GetBoundingBox().GetUpperPoint());
    EXPECT_TRUE(curve->IsClosed());
    EXPECT_EQ(4, curve->GetLocations().size());
    EXPECT_EQ(ZORMathPoint(1, 0.5, 0), curve->GetLocation(1.5, nullptr).point);
    ASSERT_TRUE(curve->Project({0.5, 2, 0}, location));
    EXPECT_EQ(ZORMathPoint(0.5, 1, 0), location.point);
    EXPECT_EQ(0.5, location.distance);
    EXPECT_EQ(1, m_surface->GetReferenceCount());
    EXPECT_EQ(2, m_container.GetNumGeometry());
}

TEST_F(ZORGeoCurveOnSurfaceTest, RefusesAChangeAndStaysAsItIs)
{
    ZORGeoCurveOnSurface curve(Locate({{0, 0, 0}, {1, 0, 0}}), false);
    QSignalSpy changes(&curve, &ZORGeoGeometry::ShapeChanged);
    const auto failureOf = [&](const QList<ZORGeoLocationOnSurface>& locations) {
        return MessageOf([&] { curve.SetLocations(locations); });
    };
    const auto cube = Cube().Make();
    EXPECT_EQ("the curve needs a location", failureOf({}));
    EXPECT_EQ("location 0 of the curve is on another surface", failureOf({cube->Project({0, 0, 0})}));
    auto locations = Locate({{0, 1, 0}, {1, 1, 0}});
    locations.append(ZORGeoLocationOnSurface());
    EXPECT_EQ("location 2 of the curve is not on a surface", failureOf(locations));
    locations[2] = locations[1];
    locations[2].point.SetX(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ("point 2 of the curve is not finite or too far away", failureOf(locations));
    locations.removeLast();
    delete m_surface;
    EXPECT_EQ("the curve has no surface", failureOf(locations));
    EXPECT_EQ(0, changes.size());
    EXPECT_EQ(2, curve.GetNumPoints());
    EXPECT_EQ(ZORMathPoint(0, 0, 0), curve.GetPoint(0));
}

TEST_F(ZORGeoCurveOnSurfaceTest, KeepsItsPointsWhenTheSurfaceIsDestroyed)
{
    const ZORGeoCurveOnSurface curve(Locate({{0, 0, 0}, {1, 0, 0}}), false);
    delete m_surface;
    EXPECT_EQ(nullptr, curve.GetSurface());
    EXPECT_TRUE(curve.GetLocations().isEmpty());
    EXPECT_EQ(1, curve.GetLength());
}

} // namespace
