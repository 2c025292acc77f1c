// Lines and arcs of drawings.

#pragma once

#include "ZORNestPlane_p.h"

/// A line, or an arc about a centre; an arc whose ends are equal is a full circle.
struct ZORNestPiece
{
    ZORNestPlanePoint start;
    ZORNestPlanePoint end;
    ZORNestPlanePoint center; // of arcs
    int turn = 0;             ///< 0 line, 1 arc counter-clockwise, -1 arc clockwise

    bool IsLine() const { return turn == 0; }
    double GetRadius() const { return Length(center - start); }
    /// Angle of the arc, above 0 and up to 2 pi, whatever its direction; 0 for a line.
    double GetSweep() const;
    double GetLength() const;
    ZORNestPlanePoint GetMiddle() const;
    ZORNestPlaneBox GetBox() const;
    /// What the piece adds to twice the area to the left of its chain (Green's theorem, about \a origin).
    double GetTwiceArea(ZORNestPlanePoint origin) const;
    /// How often the ray from \a point in the direction of x crosses the piece. Each piece has its lower end
    /// and not its upper one, so that the crossings of a closed chain are odd inside, whatever the ray meets.
    int CountCrossings(ZORNestPlanePoint point) const;
    void Reverse();
    friend bool operator==(const ZORNestPiece&, const ZORNestPiece&) = default;
};
