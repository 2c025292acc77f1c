// Division of a curve into edges.

#pragma once

#include "ZORTopStructure_p.h"

class ZORGeoCurve;

/// Divides a curve at the points where it turns by more than the tolerance; O(n).
///
/// A point nearer to the one before it than 1e-9 of the length of the curve repeats it and is passed over; a
/// curve that ends as near to its start is closed.
/// \param tolerance  radians, 0 or more
/// \return one vertex for a curve without length; nothing for one without points
ZORTopStructure ZorTopDivideCurve(const ZORGeoCurve& curve, double tolerance);
