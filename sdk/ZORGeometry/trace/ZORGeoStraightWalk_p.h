// Straightest curves over a mesh.

#pragma once

#include "walk/ZORGeoWalkStart_p.h"

class ZORGeoTraceRecorder;

/// The two sides of a straightest curve; nothing where a side leaves the surface at once.
struct ZORGeoStraightStarts
{
    std::optional<ZORGeoWalkStart> ahead;
    std::optional<ZORGeoWalkStart> behind;
};
/// \param direction  finite reference, projected as ZORGeoCurveOnSurfaceProcessor::ComputeGeodesic() tells
/// \param zero       the vector that stands in for a vanishing direction
/// \param angle      finite, radians
ZORGeoStraightStarts ZorGeoStartStraight(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                         const ZORMathVector& direction, const ZORMathVector& zero,
                                         double angle);

/// Walks one side of a straightest curve.
void ZorGeoWalkStraight(const ZORGeoMesh& mesh, const ZORGeoWalkStart& start, ZORGeoTraceRecorder& recorder);
