// Fixture of the tests of bodies: a container and the factory.

#pragma once

#include "sdk/ZORGeometry/TestMeshes.h"
#include "support/ContainerContent.h"
#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORTopology/ZORTopFactory.h>

#include <gtest/gtest.h>

class TopologyTest : public testing::Test
{
protected:
    static constexpr double kDegree = std::numbers::pi / 180;

    ZORGeoPolyline* AddPolyline(const ZORMathSetOfPoints& points)
    {
        return Register(new ZORGeoPolyline(&container, points, true));
    }
    ZORGeoSurface* AddSurface(const TestMesh& mesh) { return Register(mesh.Make(&container).release()); }
    ZORTopBody* Divide(const ZORMathSetOfPoints& points, double degrees = 45)
    {
        return factory.CreateCurve(AddPolyline(points), degrees * kDegree);
    }
    ZORTopBody* Divide(const TestMesh& mesh, double degrees = 45)
    {
        return factory.CreateSurface(AddSurface(mesh), degrees * kDegree);
    }

    /// "faces/edges/vertices"
    static QString Figures(const ZORTopBody* body)
    {
        return body ? QString("%1/%2/%3")
                          .arg(QString::number(body->GetNumFaces()), QString::number(body->GetNumEdges()),
                               QString::number(body->GetNumVertices()))
                    : QString("null");
    }

    /// A regular polygon of radius 10 in the plane z = 0 that ends at its first corner, up to rounding.
    static ZORMathSetOfPoints Polygon(int sides)
    {
        ZORMathSetOfPoints points;
        for (int i = 0; i <= sides; ++i) {
            const double angle = 2 * std::numbers::pi * i / sides;
            points.append(ZORMathPoint(10 * std::cos(angle), 10 * std::sin(angle), 0));
        }
        return points;
    }

    ZORGeoContainer container;
    ZORTopFactory factory{&container};
};
