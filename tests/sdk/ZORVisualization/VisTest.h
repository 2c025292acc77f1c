// Fixture of the tests that look at pictures.

#pragma once

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisCamera.h>
#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisPrimitive.h>
#include <ZORVisualization/ZORVisRenderer.h>
#include <ZORVisualization/ZORVisScene.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QImage>
#include <QList>
#include <QPoint>

#include <gtest/gtest.h>

#include <functional>

/// An environment with scene and renderer, seen from the top at one pixel per millimetre with the origin in
/// the middle of the picture, on white.
class VisTest : public testing::Test
{
protected:
    VisTest();

    /// \return the object, owned by the environment
    ZORVisVirtualObject* Show(const QList<const ZORVisPrimitive*>& primitives, const ZORVisOptions& options,
                              QObject* owner = nullptr);
    static ZORVisOptions Options(const QColor& color, double thickness = 1);
    /// Owned by the container, not registered.
    ZORGeoSurface* CreateSurface(const QList<ZORMathPoint>& vertices,
                                 const QList<ZORGeoSurface::Corners>& triangles);
    /// Square of two triangles around a centre, parallel to the x-y plane.
    ZORGeoSurface* CreateSquare(const ZORMathPoint& center, double edge);

    /// Picture at 1 pixel per millimetre and device pixel ratio 1.
    QImage Render(const QSize& size = QSize(200, 100));

    ZORGeoContainer container;
    ZORVisEnvironment environment;
    ZORVisScene scene{&environment};
    ZORVisRenderer renderer;
    ZORVisCamera camera;

private:
    std::vector<std::unique_ptr<ZORGeoSurface>> m_surfaces;
};

/// Pixels for which \a predicate holds.
int CountPixels(const QImage& image, const std::function<bool(QColor)>& predicate);
/// Pixels that are not white.
int CountDrawn(const QImage& image);
/// Mean position of the pixels that are not white.
QPointF CenterOfDrawn(const QImage& image);
/// Lengths of alternating drawn and white pixels of a row, beginning with the first drawn one.
QList<int> RunsOfRow(const QImage& image, int row);
bool IsDrawn(QRgb pixel);
