#include "ZORVisDrawing_p.h"
#include "ZORVisLineData_p.h"
#include "ZORVisMeshData_p.h"

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
