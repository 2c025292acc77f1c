// Plane with a frame of its own.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

/// A plane through an origin, spanned by two directions; the x-y plane by default.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORMATHEMATICS_EXPORT ZORMathPlane
{
public:
    void SetOrigin(const ZORMathPoint& origin);
    /// Stores the directions as they are: neither normalised nor made perpendicular, and zero allowed.
    void SetDirections(const ZORMathVector& first, const ZORMathVector& second);

    ZORMathPoint GetOrigin() const { return m_origin; }
    ZORMathVector GetFirstDirection() const { return m_first; }
    ZORMathVector GetSecondDirection() const { return m_second; }

    /// origin + u * first direction + v * second direction
    ZORMathPoint Evaluate(double u, double v) const;

    friend ZORMATHEMATICS_EXPORT void ZorTraceAppend(QByteArray& out, const ZORMathPlane& plane);

private:
    ZORMathPoint m_origin;
    ZORMathVector m_first = {1, 0, 0};
    ZORMathVector m_second = {0, 1, 0};
};
