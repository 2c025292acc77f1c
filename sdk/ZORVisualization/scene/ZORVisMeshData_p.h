// What surfaces and triangles keep for drawing.

#pragma once

#include "ZORVisLazy_p.h"
#include "ZORVisPrimitiveData_p.h"

#include <ZORGeometry/ZORGeoSurface.h>

#include <QPointer>

#include <array>
#include <memory>
#include <mutex>

class ZORVisMeshPicker;
struct ZORVisMeshArrays;

struct ZORVisMeshData final : ZORVisPrimitiveData
{
    using Corners = std::array<int, 3>;

    /// What the data of a surface shares with it. Any thread may use a copy.
    struct Shared
    {
        Shared() = default;
        explicit Shared(const ZORGeoSurface& shared)
            : vertices(shared.GetVertexArray())
            , corners(shared.GetCornerArray())
            , surface(&shared)
        {
        }
        QList<ZORMathPoint> vertices;
        QList<Corners> corners;
        QPointer<const ZORGeoSurface> surface;
    };
    /// Measures the box itself; shaded smooth.
    explicit ZORVisMeshData(const Shared& shared);
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

    /// Whether arrays are to be there for the next picture, too: OpenGL copies them, and needs them once.
    enum class Arrays { Kept, UsedOnce };
    /// Returns the triangles as they are drawn, relative to the center of the box. The first call makes them.
    std::shared_ptr<const ZORVisMeshArrays> GetArrays(Arrays use) const;
    /// Makes the arrays for the next picture, whatever draws it.
    void Prepare() const;

private:
    mutable std::mutex m_arraysMutex;
    mutable std::shared_ptr<const ZORVisMeshArrays> m_arrays;
    mutable bool m_areArraysKept = false;
};
