#include "ZORVisDrawing_p.h"
#include "ZORVisPicking_p.h"

namespace {

ZORMathBoundingBox BoxOf(const QList<ZORMathPoint>& points)
{
    ZORMathBoundingBox box;
    for (const ZORMathPoint& point : points)
        box.Add(point);
    return box;
}

} // namespace

ZORVisPrimitiveData::~ZORVisPrimitiveData() = default;

ZORVisLineData::ZORVisLineData(const ZORMathSetOfPoints& linePoints,
                               ZORVisPolylinePrimitive::Structure lineStructure)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Lines)
    , points(linePoints)
    , structure(lineStructure)
{
    box = BoxOf(points);
}

ZORVisLineData::~ZORVisLineData() = default;

ZORVisPointData::ZORVisPointData(const ZORMathSetOfPoints& markedPoints)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Points)
    , points(markedPoints)
{
    box = BoxOf(points);
}

ZORVisPointData::~ZORVisPointData() = default;

ZORVisTextData::ZORVisTextData(const QString& string, const ZORMathPoint& place,
                               ZORVisTextPrimitive::AnchorLocation anchorLocation,
                               ZORVisTextPrimitive::Scalability scaling)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Text)
    , text(string)
    , position(place)
    , anchor(anchorLocation)
    , scalability(scaling)
{
    box.Add(position);
}

ZORVisMeshData::ZORVisMeshData(const QList<ZORMathPoint>& meshVertices, const QList<Corners>& meshCorners,
                               bool isSmooth)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Mesh)
    , vertices(meshVertices)
    , corners(meshCorners)
    , smooth(isSmooth)
{
    box = BoxOf(vertices);
}

ZORVisMeshData::~ZORVisMeshData() = default;
