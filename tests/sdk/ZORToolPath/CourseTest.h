// Fixture of the tests of courses: a flat surface with room for them and a folder for features.

#pragma once

#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORToolPath/ZORTPCourse.h>

#include <gtest/gtest.h>

#include <cmath>

class CourseTest : public testing::Test
{
protected:
    CourseTest()
        : folder(new ZORFeatFolder(container.GetFeatureRoot("ZORFeatRoot")))
        , surface(MakeSquare(&container))
    {
        folder->Initialize();
        surface->Initialize();
        numBefore = container.GetNumGeometry();
    }

    static ZORGeoSurface* MakeSquare(ZORGeoContainer* owner)
    {
        const QList<ZORMathPoint> corners{{-300, -300, 0}, {300, -300, 0}, {300, 300, 0}, {-300, 300, 0}};
        return new ZORGeoSurface(owner, corners, {{0, 1, 2}, {0, 2, 3}});
    }
    /// Two legs of 200 mm with a bend of 60 degrees between them.
    QList<ZORGeoLocationOnSurface> Corner() const
    {
        return {surface->Project({-200, 0, 0}), surface->Project({0, 0, 0}),
                surface->Project({100, 200 * std::sqrt(0.75), 0})};
    }
    /// A registered course along Corner().
    ZORTPCourse* Add()
    {
        auto* const course = new ZORTPCourse(folder, Corner(), 6.35);
        course->Initialize();
        return course;
    }
    /// A registered course around the inner corner, (1, 1), of an L that has no room for larger radii.
    ZORTPCourse* AddWithoutRoom()
    {
        auto* const angle = new ZORGeoSurface(
            &container, {{0, 0, 0}, {9, 0, 0}, {9, 1, 0}, {1, 1, 0}, {1, 9, 0}, {0, 9, 0}, {0, 1, 0}},
            {{0, 1, 2}, {0, 2, 3}, {0, 3, 6}, {6, 3, 4}, {6, 4, 5}});
        angle->Initialize();
        auto* const course = new ZORTPCourse(
            folder, {angle->Project({8, 1, 0}), angle->Project({1, 1, 0}), angle->Project({1, 8, 0})}, 1);
        course->Initialize();
        return course;
    }

    ZORFeatContainer container;
    ZORFeatFolder* folder;
    ZORGeoSurface* surface;
    int numBefore = 0;
};
