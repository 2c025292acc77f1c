// Curves and outlines of a drawing in the plane, before they become parts.

#pragma once

#include <QColor>
#include <QList>
#include <QString>

#include <cmath>

/// A point or vector of the plane, millimetres.
struct ZORNestPlanePoint
{
    double x = 0;
    double y = 0;

    friend ZORNestPlanePoint operator+(ZORNestPlanePoint a, ZORNestPlanePoint b)
    {
        return {a.x + b.x, a.y + b.y};
    }
    friend ZORNestPlanePoint operator-(ZORNestPlanePoint a, ZORNestPlanePoint b)
    {
        return {a.x - b.x, a.y - b.y};
    }
    friend ZORNestPlanePoint operator*(double s, ZORNestPlanePoint a) { return {s * a.x, s * a.y}; }
    friend bool operator==(ZORNestPlanePoint, ZORNestPlanePoint) = default;

    double Dot(ZORNestPlanePoint b) const { return x * b.x + y * b.y; }
    double Cross(ZORNestPlanePoint b) const { return x * b.y - y * b.x; }
    double GetLength() const { return std::hypot(x, y); }
    double DistanceTo(ZORNestPlanePoint b) const { return std::hypot(x - b.x, y - b.y); }
    /// A quarter turn to the left.
    ZORNestPlanePoint GetNormal() const { return {-y, x}; }
    bool IsFinite() const { return std::isfinite(x) && std::isfinite(y); }
};

struct ZORNestPlaneBox
{
    double xMin = HUGE_VAL, yMin = HUGE_VAL, xMax = -HUGE_VAL, yMax = -HUGE_VAL;

    void Add(ZORNestPlanePoint point);
    void Add(const ZORNestPlaneBox& box);
    bool Contains(const ZORNestPlaneBox& box) const
    {
        return xMin <= box.xMin && yMin <= box.yMin && box.xMax <= xMax && box.yMax <= yMax;
    }
    bool Contains(ZORNestPlanePoint p) const
    {
        return xMin <= p.x && p.x <= xMax && yMin <= p.y && p.y <= yMax;
    }
};

/// A line, or an arc about a centre; an arc whose ends are equal is a full circle.
struct ZORNestPiece
{
    ZORNestPlanePoint start;
    ZORNestPlanePoint end;
    ZORNestPlanePoint center; // of arcs
    int turn = 0;             ///< 0 line, 1 arc counter-clockwise, -1 arc clockwise

    bool IsLine() const { return turn == 0; }
    double GetRadius() const { return center.DistanceTo(start); }
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

/// How a curve or text was drawn.
struct ZORNestLook
{
    QString layer;
    QColor color; // invalid: that of the layer
    friend bool operator==(const ZORNestLook&, const ZORNestLook&) = default;
};

/// One line or arc, or the chain of several that stands for one curved entity.
struct ZORNestCurve
{
    QList<ZORNestPiece> pieces; // at least one; each starts exactly where the one before ends
    bool isSpline = false;      ///< several pieces that are one curve; otherwise each is on its own
    ZORNestLook look;

    ZORNestPlanePoint GetStart() const { return pieces.constFirst().start; }
    ZORNestPlanePoint GetEnd() const { return pieces.constLast().end; }
    ZORNestPlaneBox GetBox() const;
    bool IsClosed() const { return GetStart() == GetEnd(); }
    void Reverse();
};

struct ZORNestDrawnText
{
    ZORNestPlanePoint start;
    ZORNestPlanePoint end; ///< where the source puts a second point, else the start
    QString text;
    QString font;
    double height = 0;
    double angle = 0; ///< radians
    double width = 1;
    double tilt = 0;       ///< radians
    int justification = 0; ///< ZORNestResultSegment::TextJustification
    ZORNestLook look;
};

/// A chain of curves, each starting where the one before ends.
struct ZORNestChain
{
    QList<ZORNestCurve> curves;

    bool IsClosed() const { return curves.constFirst().GetStart() == curves.constLast().GetEnd(); }
    ZORNestPlaneBox GetBox() const;
    /// Positive when it runs counter-clockwise.
    double GetArea() const;
    /// \pre closed. Points on the chain itself are on either side.
    bool Contains(ZORNestPlanePoint point) const;
    void Reverse();
};

/// A part: one outline with what lies within it.
struct ZORNestPart
{
    struct Shape
    {
        ZORNestChain chain;
        int father = -1; ///< index of the shape around this one
        bool isHole = false;
        bool isMark = false; ///< drawn on the part, not cut
    };

    QString name;
    QString assembly;    ///< what the source groups the part under; may be empty
    QList<Shape> shapes; ///< the outline first, counter-clockwise; holes clockwise
    QList<ZORNestDrawnText> texts;
};
