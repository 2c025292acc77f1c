// What primitives and representations keep for drawing. All of it is immutable and shared.

#pragma once

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>

#include <QList>
#include <QPointer>
#include <QString>

#include <array>
#include <memory>
#include <vector>

class ZORVisMeshPicker;
class ZORVisPointPicker;
class ZORVisVirtualObject;
struct ZORVisMeshArrays;

enum class ZORVisPrimitiveKind { Lines, Points, Text, Mesh };

/// Data of a primitive; its class follows from its kind.
struct ZORVisPrimitiveData
{
    explicit ZORVisPrimitiveData(ZORVisPrimitiveKind dataKind)
        : kind(dataKind)
    {
    }
    virtual ~ZORVisPrimitiveData();

    const ZORVisPrimitiveKind kind;
    ZORMathBoundingBox box;
};

struct ZORVisLineData final : ZORVisPrimitiveData
{
    ZORVisLineData(const ZORMathSetOfPoints& linePoints, ZORVisPolylinePrimitive::Structure lineStructure);
    ~ZORVisLineData() override;

    const ZORMathSetOfPoints points;
    const ZORVisPolylinePrimitive::Structure structure;
    mutable std::unique_ptr<ZORVisPointPicker> picker; // made by the first pick
};

struct ZORVisPointData final : ZORVisPrimitiveData
{
    explicit ZORVisPointData(const ZORMathSetOfPoints& markedPoints);
    ~ZORVisPointData() override;

    const ZORMathSetOfPoints points;
    mutable std::unique_ptr<ZORVisPointPicker> picker; // made by the first pick
};

struct ZORVisTextData final : ZORVisPrimitiveData
{
    ZORVisTextData(const QString& string, const ZORMathPoint& place,
                   ZORVisTextPrimitive::AnchorLocation anchorLocation,
                   ZORVisTextPrimitive::Scalability scaling);

    const QString text;
    const ZORMathPoint position;
    const ZORVisTextPrimitive::AnchorLocation anchor;
    const ZORVisTextPrimitive::Scalability scalability;
};

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
    const bool smooth;                                // otherwise flat
    const QPointer<const ZORGeoSurface> surface;      // not owned; null when there is none or it has died
    mutable std::unique_ptr<ZORVisMeshPicker> picker; // made by the first pick
    mutable std::unique_ptr<ZORVisMeshArrays> arrays; // made by the first picture without OpenGL
};

/// Primitives with their common options.
struct ZORVisRepItem
{
    ZORVisOptions options;
    std::vector<std::shared_ptr<const ZORVisPrimitiveData>> primitives;
};

/// One thing to draw: what, and for whom it is drawn.
struct ZORVisDrawObject
{
    /// \param rep       may be null
    /// \param drawnFor  null in pictures without environment
    ZORVisDrawObject(const ZORVisRep* rep, ZORVisVirtualObject* drawnFor);

    ZORVisRep::Items items;
    ZORMathBoundingBox box;
    ZORVisVirtualObject* object; // not owned
    qint64 size = 0;             // triangles and line segments
};

/// The primitives of one kind of an item, in drawing order.
template<class Data, ZORVisPrimitiveKind kind, class Function>
void ZORVisForEach(const ZORVisRepItem& item, Function function)
{
    for (const auto& primitive : item.primitives) {
        if (primitive->kind == kind)
            function(static_cast<const Data&>(*primitive));
    }
}
