// Fixture of the tests of container files.

#pragma once

#include "TestMeshes.h"
#include "support/ContainerFiles.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <gtest/gtest.h>

#include <utility>

class ContainerFileTest : public testing::Test
{
protected:
    template<class T>
    static T* At(int index, ZORGeoContainer& container)
    {
        return qobject_cast<T*>(container.GetGeometryByIndex(index));
    }
    template<class T, class... Args>
    static T* Add(const QString& name, Args&&... args)
    {
        auto* geometry = new T(std::forward<Args>(args)...);
        geometry->setObjectName(name);
        geometry->Initialize();
        return geometry;
    }

    /// One geometry of every class of the module, users before and after what they use.
    static void Fill(ZORGeoContainer& container)
    {
        Add<ZORGeoCartesianPoint>("P", &container, ZORMathPoint(0.1, -0.0, 5e-324));
        auto* const line =
            Add<ZORGeoLine>("L", &container, ZORMathPoint(0, 0, 0), ZORMathPoint(1.0 / 3, 1e60, 0));
        Add<ZORGeoPolyline>("\u00fcber", &container,
                            ZORMathSetOfPoints({{0, 0, 0}, {0, 0, 0}, {1, 2, 3}, {4, 5, 6.7}}), true);
        Add<ZORGeoPolyline>("none", &container, ZORMathSetOfPoints(), true);
        const TestMesh mesh = Cube();
        auto* const surface = Add<ZORGeoSurface>("S", &container, mesh.vertices, mesh.triangles);
        auto* const open = Add<ZORGeoSurface>(
            "Open", &container, mesh.vertices,
            QList<ZORGeoSurface::Corners>(mesh.triangles.begin(), mesh.triangles.begin() + 2));
        Add<ZORGeoPointOnCurve>("PC", line->GetLocation(0.25, nullptr));
        const ZORGeoLocationOnSurface a = surface->Project({0.3, 0.2, -1});
        const ZORGeoLocationOnSurface b = surface->Project({0.9, 0.7, -1});
        Add<ZORGeoPointOnSurface>("PS", a);
        Add<ZORGeoCurveOnSurface>("CS", QList<ZORGeoLocationOnSurface>{a, b}, true);
        open->CreateEdges();
    }
};
