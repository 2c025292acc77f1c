// Triangles that fill closed outlines.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <QList>

/// Cuts the area within \a outlines into triangles, three points each, at height 0: at most two a corner and
/// four a crossing of edges. Even-odd: an outline within another one is a hole, and so is what a crossing
/// outline encloses twice.
///
/// A sweep from corner to corner that cuts the area into trapezoids; O((corners + crossings) * edges that cross
/// a height). Outlines with more than some ten million of these are filled roughly where they cross.
/// \param outlines  closed by an edge from the last point to the first; height is ignored
ZORMathSetOfPoints ZorNestFill(const QList<ZORMathSetOfPoints>& outlines);
