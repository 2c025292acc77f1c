#include "VisTest.h"

#include <ZORVisualization/ZORVisRepGraphics.h>

VisTest::VisTest()
{
    renderer.SetScene(&scene);
    camera.SetStandardView(ZORVisCamera::Top);
}

ZORVisVirtualObject* VisTest::Show(const QList<const ZORVisPrimitive*>& primitives,
                                   const ZORVisOptions& options, QObject* owner)
{
    auto* object = new ZORVisVirtualObject(&environment, owner);
    object->SetRep(new ZORVisRepGraphics(primitives, options));
    environment.AddVirtualObject(object);
    return object;
}

ZORVisOptions VisTest::Options(const QColor& color, double thickness)
{
    ZORVisOptions options;
    options.SetColor(color);
    options.SetLineThickness(thickness);
    return options;
}

ZORGeoSurface* VisTest::CreateSurface(const QList<ZORMathPoint>& vertices,
                                      const QList<ZORGeoSurface::Corners>& triangles)
{
    m_surfaces.push_back(std::make_unique<ZORGeoSurface>(&container, vertices, triangles));
    return m_surfaces.back().get();
}

ZORGeoSurface* VisTest::CreateSquare(const ZORMathPoint& center, double edge)
{
    const double half = edge / 2;
    return CreateSurface({center + ZORMathVector(-half, -half, 0), center + ZORMathVector(half, -half, 0),
                          center + ZORMathVector(half, half, 0), center + ZORMathVector(-half, half, 0)},
                         {{0, 1, 2}, {0, 2, 3}});
}

QImage VisTest::Render(const QSize& size)
{
    camera.SetView(camera.GetTarget(), camera.GetViewDirection(), camera.GetUpDirection(), size.height());
    return renderer.Render(camera, size);
}

bool IsDrawn(QRgb pixel)
{
    return qRed(pixel) < 200 || qGreen(pixel) < 200 || qBlue(pixel) < 200;
}

int CountPixels(const QImage& image, const std::function<bool(QColor)>& predicate)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += predicate(image.pixelColor(x, y)) ? 1 : 0;
    }
    return count;
}

int CountDrawn(const QImage& image)
{
    return CountPixels(image, [](const QColor& color) { return IsDrawn(color.rgb()); });
}

QPointF CenterOfDrawn(const QImage& image)
{
    QPointF sum;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (IsDrawn(image.pixel(x, y))) {
                sum += QPointF(x + 0.5, y + 0.5);
                ++count;
            }
        }
    }
    return count > 0 ? sum / count : QPointF();
}

QList<int> RunsOfRow(const QImage& image, int row)
{
    QList<int> runs;
    bool wasDrawn = false;
    for (int x = 0; x < image.width(); ++x) {
        const bool drawn = IsDrawn(image.pixel(x, row));
        if (runs.isEmpty() && !drawn)
            continue;
        if (runs.isEmpty() || drawn != wasDrawn)
            runs.append(0);
        ++runs.last();
        wasDrawn = drawn;
    }
    return runs;
}
