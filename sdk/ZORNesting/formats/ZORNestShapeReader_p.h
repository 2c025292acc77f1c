// Reads outlines of instance documents.

#pragma once

#include "ZORNestJsonNode_p.h"
#include "solver/model/ZORNestSolverOutline.h"

/// Reads the shapes of items and sheets; faults are thrown as ZORNestJsonFault.
class ZORNestShapeReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestShapeReader)

public:
    /// Reads rings of points: {"data": [[x, y] ...]} or {"data": {"outer": [...], "inner": [[...] ...]}}, the outer
    /// one first, without repeated first points.
    static ZORNestSolver::Polygon ReadPolygon(const ZORNestJsonNode& shape);

    /// Appends the contours of a shape of the type "simple_polygon", "polygon" or "path" to \a contours, those before
    /// a fault as well.
    static void ReadContours(const ZORNestJsonNode& shape, std::vector<ZORNestSolver::Contour>& contours);

private:
    using Point = ZORNestSolver::Point;
    using Segment = ZORNestSolver::Segment;

    static Point ReadPoint(const ZORNestJsonNode& node, qsizetype at = 0);
    static ZORNestSolver::Ring ReadRing(const ZORNestJsonNode& node);
    template<class Function>
    static void ForEachRing(const ZORNestJsonNode& shape, Function function);
    static ZORNestSolver::Contour ReadContour(const ZORNestJsonNode& node);
    static Segment ReadSegment(const ZORNestJsonNode& node, Point start);
    static void ReadArc(const ZORNestJsonNode& node, Segment& segment);
    static void CheckCircle(const ZORNestJsonNode& node, Point start, const Segment& arc);
};
