// Point symbols.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPrimitive.h>

/// One symbol per point, in the point symbol of the representation. Points that are not finite are not drawn.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisPointPrimitive final : public ZORVisPrimitive
{
public:
    /// \param points  millimetres; may be empty
    explicit ZORVisPointPrimitive(const ZORMathSetOfPoints& points);

    const ZORMathSetOfPoints& GetPoints() const;
};
