// The entities of DXF files that draw something by themselves.

#pragma once

#include "ZORNestDxfTags_p.h"
#include "drawing/ZORNestDrawing_p.h"

#include <QList>

/// Each draws one record; \a map is that of the block and the units. Those whose numbers make no sense are
/// skipped in the drawing's report.
namespace ZORNestDxfEntities {

struct Vertex
{
    ZORNestPlanePoint point;
    double bulge = 0;
};

/// The map of an entity's own coordinates: the identity, or mirrored where it is seen from below.
/// \return false when the entity is not parallel to the plane of x and y
bool GetSystem(const ZORNestDxfRecord& record, ZORNestPlaneMap& system);

/// Returns what the report says about an entity that is not parallel to the plane: "%1 out of the plane".
QString DescribeOutOfPlane(const QString& type);

/// \return false when the record is none of LINE, ARC, CIRCLE, ELLIPSE, LWPOLYLINE, SPLINE, TEXT, ATTRIB,
///         MTEXT
bool Draw(const ZORNestDxfRecord& record, const ZORNestLook& look, const ZORNestPlaneMap& map,
          ZORNestDrawing& drawing);

void DrawVertices(const QList<Vertex>& vertices, bool isClosed, const ZORNestLook& look,
                  const ZORNestPlaneMap& map, const QString& what, ZORNestDrawing& drawing);

} // namespace ZORNestDxfEntities
