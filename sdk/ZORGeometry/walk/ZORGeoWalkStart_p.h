// Where and how a walk over a mesh begins.

#pragma once

#include "ZORGeoMeshWalker_p.h"

#include <optional>

/// The first step of a walk: an entry into a triangle and what is already behind the start. A walk that
/// begins inside a triangle is told by the entry through which it would have come there straight.
struct ZORGeoWalkStart
{
    ZORGeoMeshEntry entry;
    ZORGeoMeshHeading heading;
    double skipped = 0;            // from the entry to the start, millimetres
    double weights[3] = {1, 0, 0}; // of the start in the entered triangle
};

/// A start location, told by the part of the triangle that it lies in.
struct ZORGeoWalkPlace
{
    enum Part {
        Inside,
        OnSide, // at u of the side from corner to corner + 1
        OnCorner,
    };
    Part part = Inside;
    int triangle = 0; // with an area, counted from 0
    int corner = 0;
    double u = 0;
    double weights[3] = {1, 0, 0};
};

/// Weights below 1e-12 count as 0. A place in a triangle without area is told by a triangle around it.
/// \param triangle  counted from 0
/// \param weights   of the corners A, B, C, sum 1
/// \return nothing where all triangles around have no area
std::optional<ZORGeoWalkPlace> ZorGeoFindWalkPlace(const ZORGeoMesh& mesh, int triangle,
                                                   const double (&weights)[3]);

/// The entry into the triangle at a place on a side or corner.
ZORGeoMeshEntry ZorGeoMakeEntry(const ZORGeoWalkPlace& place);
/// The same place of the side PQ as an entry into the triangle on its other side.
/// \return nothing at the border
std::optional<ZORGeoMeshEntry> ZorGeoEnterBeyond(const ZORGeoMesh& mesh, const ZORGeoMeshEntry& entry);

/// A start on the side PQ of an entry.
ZORGeoWalkStart ZorGeoStartAt(const ZORGeoMeshEntry& entry, const ZORGeoMeshHeading& heading);
/// A start inside a triangle.
/// \param direction  unit vector in the plane of the triangle
ZORGeoWalkStart ZorGeoStartInside(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                  const ZORMathVector& direction);
/// A start on a side of a triangle.
/// \param angle  from the side, counter-clockwise as the triangle sees it
/// \return nothing when it leaves over the border
std::optional<ZORGeoWalkStart> ZorGeoStartOnSide(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                                 double angle);

/// Area times 2 times normal of a triangle.
ZORMathVector ZorGeoTwiceAreaNormal(const ZORGeoMesh& mesh, int triangle);
/// From the start of a side to its end.
ZORMathVector ZorGeoSideVector(const ZORGeoMesh& mesh, int triangle, int side);

namespace zor::geo {

/// Returns whether a triangle is more than a line.
/// \param smallest  part of its longest side by which its height is at least longer than rounding
bool HasArea(const ZORGeoMesh& mesh, int triangle, double smallest);

} // namespace zor::geo
