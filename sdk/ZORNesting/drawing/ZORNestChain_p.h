// Curves of drawings and the chains that they form.

#pragma once

#include "ZORNestPiece_p.h"

#include <QColor>
#include <QList>
#include <QString>

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
