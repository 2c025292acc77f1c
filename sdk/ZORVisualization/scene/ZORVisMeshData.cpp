#include "ZORVisMeshArrays_p.h"
#include "ZORVisMeshData_p.h"
#include "ZORVisPicking_p.h"

#include <ZORSystem/ZORSysMemory.h>

namespace {

QList<ZORVisMeshData::Corners> SuccessiveTriples(qsizetype numPoints)
{
    auto corners = ZORSysMemory::MakeList<ZORVisMeshData::Corners>(numPoints / 3);
    for (int i = 0; i < int(corners.size()); ++i)
        corners[i] = {3 * i, 3 * i + 1, 3 * i + 2};
    return corners;
}

} // namespace

ZORVisMeshData::ZORVisMeshData(const Shared& shared)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Mesh)
    , vertices(shared.vertices)
    , corners(shared.corners)
    , smooth(true)
    , surface(shared.surface)
{
    for (const Corners& triangle : corners) {
        for (const int corner : triangle)
            box.Add(vertices[corner]);
    }
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
    AddToBox(vertices);
}

ZORVisMeshData::~ZORVisMeshData() = default;

std::shared_ptr<const ZORVisMeshArrays> ZORVisMeshData::GetArrays(Arrays use) const
{
    const std::lock_guard lock(m_arraysMutex);
    std::shared_ptr<const ZORVisMeshArrays> arrays = m_arrays;
    if (!arrays)
        arrays = std::make_shared<const ZORVisMeshArrays>(*this, box.GetCenter());
    m_areArraysKept = m_areArraysKept || use == Arrays::Kept;
    m_arrays = m_areArraysKept ? arrays : nullptr;
    return arrays;
}

void ZORVisMeshData::Prepare() const
{
    const std::lock_guard lock(m_arraysMutex);
    if (!m_arrays)
        m_arrays = std::make_shared<const ZORVisMeshArrays>(*this, box.GetCenter());
}
