#include "ZORVisDrawing_p.h"
#include "ZORVisMeshArrays_p.h"
#include "ZORVisPicking_p.h"

#include <ZORSystem/ZORSysMemory.h>

namespace {

ZORMathBoundingBox BoxOf(const QList<ZORMathPoint>& points)
{
    ZORMathBoundingBox box;
    for (const ZORMathPoint& point : points)
        box.Add(point);
    return box;
}

QList<ZORVisMeshData::Corners> SuccessiveTriples(qsizetype numPoints)
{
    auto corners = ZORSysMemory::MakeList<ZORVisMeshData::Corners>(numPoints / 3);
    for (int i = 0; i < int(corners.size()); ++i)
        corners[i] = {3 * i, 3 * i + 1, 3 * i + 2};
    return corners;
}

} // namespace

ZORVisDrawObject::ZORVisDrawObject(const ZORVisRep* rep, ZORVisVirtualObject* drawnFor)
    : object(drawnFor)
{
    if (!rep)
        return;
    items = rep->GetItems();
    box = rep->GetBoundingBox();
    for (const auto& item : items) {
        ZORVisForEach<ZORVisMeshData, ZORVisPrimitiveKind::Mesh>(
            *item, [this](const ZORVisMeshData& mesh) { size += mesh.corners.size(); });
        ZORVisForEach<ZORVisLineData, ZORVisPrimitiveKind::Lines>(
            *item, [this](const ZORVisLineData& lines) { size += lines.points.size(); });
    }
}

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

ZORVisMeshData::ZORVisMeshData(const ZORGeoSurface& drawnSurface)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Mesh)
    , vertices(drawnSurface.GetVertexArray())
    , corners(drawnSurface.GetCornerArray())
    , smooth(true)
    , surface(&drawnSurface)
{
    box = drawnSurface.GetBoundingBox();
}

ZORVisMeshData::ZORVisMeshData(const QList<ZORMathPoint>& points)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Mesh)
    , vertices(points)
    , corners(SuccessiveTriples(points.size()))
    , smooth(false)
{
    box = BoxOf(vertices);
}

ZORVisMeshData::~ZORVisMeshData() = default;
