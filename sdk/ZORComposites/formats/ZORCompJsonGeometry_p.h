// Points and axes in CompoST JSON.

#pragma once

#include "ZORCompJsonFields_p.h"

#include <ZORComposites/ZORCompDocument.h>

/// "list[3]"
QString ZorCompPathOf(const QString& list, int index);

/// Takes the field "points". What a point says besides its coordinates stays there, in a list of objects with the
/// "position" of the point.
/// \throws ZORSysException a point lacks a coordinate; see ZORCompJsonFields
ZORMathSetOfPoints ZorCompTakePoints(ZORCompJsonFields& fields);

/// Takes the origin "o_pt" or "pt", and the axes: the vectors "v1x" ... "v2z", else the points "x_pt" and "y_pt".
/// \return false when they are not there or make no rosette; nothing is taken then
bool ZorCompTakeAxes(ZORCompJsonFields& fields, ZORCompDocument::Rosette& rosette);
