// Tests that geometries come back from container files as they were.

#include "ContainerFileTest.h"
#include "support/ContainerContent.h"

#include <cmath>

namespace {

using ZORGeoContainerFileTest = ContainerFileTest;

TEST_F(ZORGeoContainerFileTest, EveryClassComesBackWithNamesReferencesAndTheSameBytes)
{
    ZORGeoContainer container;
    Fill(container);
    ZORGeoContainer loaded;
    EXPECT_TRUE(RoundTrips(container, loaded));
}

// Whatever the machine and the seed of hashes: what is written today is read by every later version.
TEST_F(ZORGeoContainerFileTest, TheDocumentIsTheSameEverywhere)
{
    ZORGeoContainer container;
    auto* const curve = Add<ZORGeoLine>("L", &container, ZORMathPoint(), ZORMathPoint(2, 0, 0));
    Add<ZORGeoPointOnCurve>("P", curve->GetLocation(0.5, nullptr));
    const QByteArray document = OpenContainerFile(SaveContainer(container));
    EXPECT_EQ(document.toPercentEncoding().toStdString(),
              "%A2fformatgZORContgobjects%82"
              "%85jZORGeoLineaL%A0%A0%A2"
              "estart%D8VX%18%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00"
              "cend%D8VX%18%00%00%00%00%00%00%00%40%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00"
              "%85rZORGeoPointOnCurveaP%A1ecurve%D8ND%00%00%00%00%A0%A2"
              "hdistance%FB%3F%E0%00%00%00%00%00%00"
              "epoint%D8VX%18%00%00%00%00%00%00%E0%3F%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00%00");
}

TEST_F(ZORGeoContainerFileTest, KeepsExactNumbers)
{
    ZORGeoContainer container;
    Fill(container);
    ZORGeoContainer loaded;
    LoadContainer(loaded, SaveContainer(container));
    const ZORMathPoint point = At<ZORGeoPoint>(0, loaded)->GetMathPoint();
    EXPECT_EQ(0.1, point.GetX());
    EXPECT_TRUE(std::signbit(point.GetY()));
    EXPECT_EQ(5e-324, point.GetZ());
    EXPECT_EQ(ZORMathPoint(1.0 / 3, 1e60, 0), At<ZORGeoCurve>(1, loaded)->GetPoint(1));
    EXPECT_EQ(4, At<ZORGeoPolyline>(2, loaded)->GetNumPoints());
    EXPECT_EQ(0, At<ZORGeoPolyline>(3, loaded)->GetNumPoints());
    EXPECT_EQ(Cube().triangles, At<ZORGeoSurface>(4, loaded)->GetCornerArray());
    EXPECT_EQ(At<ZORGeoCurve>(1, loaded), At<ZORGeoPointOnCurve>(6, loaded)->GetCurve());
    EXPECT_EQ(0.25, At<ZORGeoPointOnCurve>(6, loaded)->GetLocationOnCurve().distance);
    const ZORGeoLocationOnSurface before = At<ZORGeoPointOnSurface>(7, container)->GetLocationOnSurface();
    const ZORGeoLocationOnSurface after = At<ZORGeoPointOnSurface>(7, loaded)->GetLocationOnSurface();
    EXPECT_EQ(before.triangle, after.triangle);
    EXPECT_EQ(before.weightB, after.weightB);
    EXPECT_EQ(before.weightC, after.weightC);
    EXPECT_EQ(before.point, after.point);
    EXPECT_TRUE(At<ZORGeoCurveOnSurface>(8, loaded)->IsClosed());
    EXPECT_EQ(4, At<ZORGeoTriangleEdgeCurve>(9, loaded)->GetEdges().size());
}

TEST_F(ZORGeoContainerFileTest, KeepsWhatHasLostItsSupport)
{
    ZORGeoContainer container;
    Fill(container);
    delete container.GetGeometryByIndex(5);
    delete container.GetGeometryByIndex(4);
    delete container.GetGeometryByIndex(1);
    const QByteArray file = SaveContainer(container);
    ZORGeoContainer loaded;
    LoadContainer(loaded, file);
    EXPECT_EQ(file, SaveContainer(loaded));
    EXPECT_FALSE(At<ZORGeoPointOnCurve>(3, loaded)->GetCurve());
    EXPECT_EQ(At<ZORGeoCurve>(5, container)->GetLength(), At<ZORGeoCurve>(5, loaded)->GetLength());
    EXPECT_EQ(4, At<ZORGeoTriangleEdgeCurve>(6, loaded)->GetEdges().size());
}

TEST_F(ZORGeoContainerFileTest, RoundTripsAnEmptyContainer)
{
    const QByteArray file = SaveContainer(ZORGeoContainer());
    ZORGeoContainer loaded;
    LoadContainer(loaded, file);
    EXPECT_EQ(0, loaded.GetNumGeometry());
    EXPECT_EQ(file, SaveContainer(loaded));
}

TEST_F(ZORGeoContainerFileTest, AddsToWhatIsThereAndMakesNamesUnique)
{
    ZORGeoContainer source;
    Add<ZORGeoCartesianPoint>("A", &source, ZORMathPoint());
    Add<ZORGeoCartesianPoint>("A.2", &source, ZORMathPoint());
    Add<ZORGeoCartesianPoint>("A", &source, ZORMathPoint());
    Add<ZORGeoCartesianPoint>("B", &source, ZORMathPoint())->setObjectName({});
    const QByteArray file = SaveContainer(source);

    ZORGeoContainer container;
    Add<ZORGeoCartesianPoint>("A", &container, ZORMathPoint());
    LoadContainer(container, file);
    EXPECT_EQ(QStringList({"A", "A.3", "A.2", "A.3", ""}), GetNames(container))
        << "equal names of the file stay equal";

    ZORGeoContainer empty;
    LoadContainer(empty, file);
    EXPECT_EQ(file, SaveContainer(empty));
}

TEST_F(ZORGeoContainerFileTest, LoadsWhatCompressesExtremelyWell)
{
    ZORGeoContainer container;
    Add<ZORGeoPolyline>("flat", &container, ZORMathSetOfPoints(QList<ZORMathPoint>(1000000)), true);
    const QByteArray file = SaveContainer(container);
    ZORGeoContainer loaded;
    LoadContainer(loaded, file);
    EXPECT_EQ(1000000, At<ZORGeoCurve>(0, loaded)->GetNumPoints());
}

TEST_F(ZORGeoContainerFileTest, KeepsWhatNobodyRefersToAndWhatIsReferredToFromOutside)
{
    ZORGeoContainer container;
    auto* const lonely = Add<ZORGeoCartesianPoint>("lonely", &container, ZORMathPoint());
    lonely->AddReference(nullptr);
    ZORGeoContainer loaded;
    LoadContainer(loaded, SaveContainer(container));
    ASSERT_EQ(1, loaded.GetNumGeometry());
    EXPECT_EQ(0, loaded.GetGeometryByIndex(0)->GetReferenceCount()) << "who counted is not in the file";
    lonely->RemoveReference(nullptr);
}

TEST_F(ZORGeoContainerFileTest, LoadedGeometryIsReferredToByWhatCameWithIt)
{
    ZORGeoContainer container;
    Fill(container);
    const QByteArray file = SaveContainer(container);
    LoadContainer(container, file);
    const int half = container.GetNumGeometry() / 2;
    EXPECT_EQ(At<ZORGeoCurve>(half + 1, container), At<ZORGeoPointOnCurve>(half + 6, container)->GetCurve());
    for (int i = 0; i < half; ++i) {
        EXPECT_EQ(container.GetGeometryByIndex(i)->GetReferenceCount(),
                  container.GetGeometryByIndex(half + i)->GetReferenceCount());
    }
}

TEST_F(ZORGeoContainerFileTest, EveryChangeOfTheFileIsReportedAndNothingElse)
{
    ZORGeoContainer container;
    ZORGeoCartesianPoint* point = nullptr;
    EXPECT_TRUE(ReportsChange(
        container, [&] { point = Add<ZORGeoCartesianPoint>("point", &container, ZORMathPoint(1, 2, 3)); }));
    EXPECT_TRUE(ReportsChange(container, [&] { point->setObjectName("corner"); }));
    EXPECT_TRUE(ReportsNoChange(container, [&] {
        point->setObjectName("corner");
        point->AddReference(nullptr);
        point->RemoveNoReferences();
        point->RemoveReference(nullptr);
        const ZORGeoCartesianPoint unregistered(&container, {});
        container.GetUniqueName("corner");
    }));
    EXPECT_TRUE(ReportsChange(container, [&] { point->RemoveNoReferences(); }));
    Add<ZORGeoCartesianPoint>("deleted", &container, ZORMathPoint());
    EXPECT_TRUE(ReportsChange(container, [&] { delete container.GetGeometryByIndex(0); }));
    Fill(container);
    const QByteArray file = SaveContainer(container);
    EXPECT_TRUE(ReportsChange(container, [&] { container.Clear(); }));
    EXPECT_TRUE(ReportsNoChange(container, [&] { container.Clear(); }));
    EXPECT_TRUE(ReportsChange(container, [&] { LoadContainer(container, file); }));
}

} // namespace
