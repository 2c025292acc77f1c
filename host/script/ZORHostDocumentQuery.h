// What a script can ask about the document.

#pragma once

#include <QString>

/// Counts and measures of the current document; geometries are named by their object names.
/// All throw ZORHostScriptError when there is no document, no geometry of that name, or one of another class.
namespace ZORHostDocumentQuery {

int CountGeometries();
int CountVirtualObjects();
int CountReferences(const QString& geometry);
int CountTriangles(const QString& surface);
int CountPoints(const QString& curve);
/// Millimetres.
double MeasureLength(const QString& curve);
/// The largest distance of the curve's points and the middles between them from the surface, millimetres; 0
/// for a curve without points.
double MeasureDeviation(const QString& curve, const QString& surface);

} // namespace ZORHostDocumentQuery
