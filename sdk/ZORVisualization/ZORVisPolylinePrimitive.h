// Polyline, or separate line segments.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPrimitive.h>

class ZORGeoCurve;
class ZORGeoRangeOfCurve;

/// Lines in the thickness and style of the representation. A point that is not finite interrupts a chain
/// and removes its segment from a list of pairs.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisPolylinePrimitive final : public ZORVisPrimitive
{
public:
    /// How the points are joined.
    enum Structure : int {
        Pairs = 0, ///< points 0-1, 2-3, ... are separate segments; an odd last point is not drawn
        Chain = 1  ///< every point is joined to the next
    };

    /// The points of a curve as a chain.
    /// \param curve  only read here; null gives an empty primitive
    /// \param range  the part of the curve to draw; the default is the whole curve
    ZORVisPolylinePrimitive(const ZORGeoCurve* curve, const ZORGeoRangeOfCurve& range);
    /// \param points     millimetres; none, or a single one, draws nothing
    /// \param structure  other codes than those of the enumeration are taken as Chain
    ZORVisPolylinePrimitive(const ZORMathSetOfPoints& points, Structure structure);

    const ZORMathSetOfPoints& GetPoints() const;
    Structure GetStructure() const;
};
