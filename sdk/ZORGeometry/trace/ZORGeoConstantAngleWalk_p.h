// Curves of constant angle to a reference direction over a mesh.

#pragma once

#include "walk/ZORGeoWalkStart_p.h"

#include <ZORMathematics/ZORMathVector.h>

#include <optional>

class ZORGeoTraceRecorder;

/// In every triangle the reference direction, projected on its plane and turned by an angle.
class ZORGeoAngleField
{
public:
    /// \param direction  finite, of any length
    /// \param angle      radians, counter-clockwise as the walk sees the surface
    ZORGeoAngleField(const ZORMathVector& direction, double angle);

    /// The unit vector of the field in a triangle with normal direction \a normal; zero where the projection
    /// vanishes (below 1e-12), or the normal does.
    ZORMathVector Get(const ZORMathVector& normal) const;

private:
    ZORMathVector m_direction; // of length 1, or zero
    double m_cos;
    double m_sin;
};

/// The first step along the field.
/// \return nothing when there is none: no triangle at the place lets the field leave it; \a isBorder tells
///         whether the border is the reason
std::optional<ZORGeoWalkStart> ZorGeoStartAlongField(const ZORGeoMesh& mesh, const ZORGeoAngleField& field,
                                                     const ZORGeoWalkPlace& place, bool& isBorder);

/// Walks along the field. Where the triangles on both sides of an edge push into it, the walk slides along it;
/// in a vertex it goes on where the field leads away from it, by the least turn.
void ZorGeoWalkAlongField(const ZORGeoMesh& mesh, const ZORGeoAngleField& field, const ZORGeoWalkStart& start,
                          ZORGeoTraceRecorder& recorder);
