// Lines and arcs along curves of other kinds.

#pragma once

#include "ZORNestPiece_p.h"

#include <QList>

#include <functional>

/// Stands lines and arcs in for curves given by a parameter.
///
/// Two arcs that share a tangent where they meet (a biarc) replace a stretch of the curve, with its ends and
/// its tangents; stretches are halved until no sampled point of the curve lies farther than the tolerance
/// from them. (K. M. Bolton, Biarc curves, Computer-Aided Design 7, 1975.)
namespace ZORNestArcFit {

/// A place on a curve, and its derivative there.
struct Place
{
    ZORNestPlanePoint point;
    ZORNestPlanePoint derivative; ///< may be zero
};
using Curve = std::function<Place(double parameter)>;

/// How far a curve is divided at most: 2^20 stretches.
constexpr int kMaximumDepth = 20;
/// How many pieces one curve gives at most, and one of its stretches between breaks.
constexpr int kMaximumPieces = 100000;
constexpr int kMaximumPiecesOfStretch = 1000;

/// Lines and arcs in place of a curve.
struct Fitted
{
    QList<ZORNestPiece> pieces; ///< connected, from the first break to the last
    bool isTooLong = false;     ///< there are no pieces, since a maximum is too low for them
};

/// \param breaks     ascending parameters: the ends of the curve, and between them all places where it is not
///                   smooth
/// \param tolerance  above 0
/// \return no pieces when the curve has no length, is not finite, or would need more pieces than the maxima
Fitted Fit(const Curve& curve, const QList<double>& breaks, double tolerance);

/// The arc from \a start in the direction of \a tangent (any length but 0) to \a end; a line where it is as
/// good as straight.
ZORNestPiece MakeTangentArc(ZORNestPlanePoint start, ZORNestPlanePoint tangent, ZORNestPlanePoint end);
/// The arc from \a start to \a end whose quarter angle has the tangent \a bulge, positive to the left
/// (counter-clockwise); a line where the bulge is as good as 0.
ZORNestPiece MakeBulgeArc(ZORNestPlanePoint start, ZORNestPlanePoint end, double bulge);
/// Distance between a point and a piece.
double GetDistance(const ZORNestPiece& piece, ZORNestPlanePoint point);

} // namespace ZORNestArcFit
