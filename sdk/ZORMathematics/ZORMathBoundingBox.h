// Axis-parallel box.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

/// The smallest axis-parallel box around points; empty until a point was added.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORMATHEMATICS_EXPORT ZORMathBoundingBox
{
public:
    ZORMathBoundingBox() = default;
    ZORMathBoundingBox(const ZORMathPoint& lower, const ZORMathPoint& upper);

    bool IsEmpty() const { return m_empty; }
    /// Corner of the smallest coordinates; the origin when the box is empty.
    ZORMathPoint GetLowerPoint() const { return m_lower; }
    /// Corner of the largest coordinates; the origin when the box is empty.
    ZORMathPoint GetUpperPoint() const { return m_upper; }
    ZORMathPoint GetCenter() const;
    /// Length of the diagonal; 0 when the box is empty, infinity beyond the largest double.
    double GetDiagonal() const;

    /// Grows the box to hold \a point; points that are not finite are ignored.
    void Add(const ZORMathPoint& point);
    void Add(const ZORMathBoundingBox& box);

    friend bool operator==(const ZORMathBoundingBox&, const ZORMathBoundingBox&) = default;
    friend ZORMATHEMATICS_EXPORT void ZorTraceAppend(QByteArray& out, const ZORMathBoundingBox& box);

private:
    ZORMathPoint m_lower;
    ZORMathPoint m_upper;
    bool m_empty = true;
};
