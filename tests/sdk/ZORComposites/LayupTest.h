// A layup with a sequence, and features for it.

#pragma once

#include "CompositesTest.h"

#include <ZORComposites/ZORCompContour.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <limits>
#include <numbers>

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class LayupTest : public CompositesTest
{
protected:
    LayupTest()
        : layup(Add<ZORCompLayup>(root))
        , sequence(Add<ZORCompSequence>(layup))
    {
    }

    ZORCompMaterial* AddMaterial(double thickness, double density = 2e-9)
    {
        auto* const material = Add<ZORCompMaterial>(ZORCompMaterialLibrary::Of(root));
        ZORCompMaterialProperties properties;
        properties.thickness = thickness;
        properties.density = density;
        material->SetProperties(properties);
        return material;
    }
    ZORCompPly* AddPly(double degrees, ZORCompMaterial* material, ZORCompSequence* parent = nullptr)
    {
        auto* const ply = Add<ZORCompPly>(parent ? parent : sequence);
        ply->SetAngle(degrees * std::numbers::pi / 180);
        ply->SetMaterial(material);
        return ply;
    }
    ZORCompContour* AddSquare(double size, double z = 0)
    {
        return Add<ZORCompContour>(
            layup, ZORMathSetOfPoints{{0, 0, z}, {size, 0, z}, {size, size, z}, {0, size, z}});
    }
    // A right triangle in the plane x = 3 with the normal +X.
    ZORGeoSurface* AddWall()
    {
        auto* const surface = new ZORGeoSurface(&container, {{3, 0, 0}, {3, 9, 0}, {3, 0, 9}}, {{0, 1, 2}});
        surface->Initialize();
        return surface;
    }

    ZORCompLayup* layup;
    ZORCompSequence* sequence;
};
