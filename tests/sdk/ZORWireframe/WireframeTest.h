// Fixture of the tests of wireframe features.

#pragma once

#include "support/MessageOf.h"
#include "support/Printers.h"
#include "support/TraceCalls.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORTopology/ZORTopBody.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <utility>

/// A container with the folder "F", and what features are made from.
class WireframeTest : public testing::Test
{
protected:
    WireframeTest();

    /// A registered geometry of the container.
    template<class Geometry, class... Args>
    Geometry* Make(const QString& name, Args&&... args)
    {
        auto* const geometry = new Geometry(&container, std::forward<Args>(args)...);
        geometry->setObjectName(name);
        geometry->Initialize();
        return geometry;
    }
    /// A registered feature of the folder.
    template<class Feature, class... Args>
    Feature* Add(Args&&... args)
    {
        auto* const feature = new Feature(folder, std::forward<Args>(args)...);
        feature->Initialize();
        return feature;
    }
    /// A square of \a size x \a size mm in the plane z = 0 from the origin, two triangles.
    ZORGeoSurface* AddSquare(const QString& name, double size = 10);

    ZORFeatContainer container;
    ZORFeatFolder* folder = nullptr;
};
