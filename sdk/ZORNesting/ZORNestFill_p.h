// Triangles that fill closed outlines.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <QList>

/// Cuts the area within \a outlines into triangles, three points each, at height 0: at most two a corner.
/// Even-odd: an outline within another one is a hole. Where outlines cross, the area is wrong up to the next
/// corners above and below.
///
/// A sweep from corner to corner that cuts the area into trapezoids; O(corners * edges that cross a height).
/// \param outlines  closed by an edge from the last point to the first; height is ignored
ZORMathSetOfPoints ZorNestFill(const QList<ZORMathSetOfPoints>& outlines);
