// What surfaces and triangles keep for drawing.

#pragma once

#include "ZORVisLazy_p.h"
#include "ZORVisPrimitiveData_p.h"

#include <ZORGeometry/ZORGeoSurface.h>

#include <QPointer>

#include <array>

class ZORVisMeshPicker;
struct ZORVisMeshArrays;

struct ZORVisMeshData final : ZORVisPrimitiveData
{
    using Corners = std::array<int, 3>;

    /// Shares the arrays of a surface; shaded smooth.
    explicit ZORVisMeshData(const ZORGeoSurface& drawnSurface);
    /// Triangles of three successive points each; shaded flat.
    explicit ZORVisMeshData(const QList<ZORMathPoint>& points);
    ~ZORVisMeshData() override;

    const QList<ZORMathPoint> vertices;
    const QList<Corners> corners;
    const bool smooth;                           // otherwise flat
    const QPointer<const ZORGeoSurface> surface; // not owned; null when there is none or it has died
    const ZORVisLazy<ZORVisMeshPicker> picker;   // made by the first pick
    const ZORVisLazy<ZORVisMeshArrays> arrays;   // made by the first picture without OpenGL
};
