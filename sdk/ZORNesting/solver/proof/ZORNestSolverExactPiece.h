// Lines and arcs as they are drawn, with exact measures.
//
// Part of the proof, whose geometry stays apart from that of the search on purpose: a fault that both share would
// hide from the proof.

#pragma once

#include "solver/geometry/ZORNestSolverPose.h"
#include "solver/model/ZORNestSolverItem.h"

namespace ZORNestSolver::Exact {

/// A line, or an arc of at most a quarter turn.
struct Piece
{
    Point a;
    Point b;
    Point center; // of an arc
    double radius = 0;
    double sweep = 0; // radians, positive counter-clockwise; 0: a line
    size_t contour = 0;

    bool IsArc() const { return sweep != 0; }
    double GetLength() const;
    /// Returns the point at a part of the piece, 0 to 1.
    Point Evaluate(double part) const;
    Box GetBox() const;
    double GetDistance(Point p) const;
    Piece Placed(const Transform& transform, bool mirrored) const;
};

/// Appends the pieces of a contour, the one that closes it included. Arcs with a radius of more than 1000 km
/// become chords, since rounding does not leave their circles exact to the tolerance of the proof.
void AppendPieces(std::vector<Piece>& pieces, const Contour& contour, size_t number);

/// Returns the least distance of any two points of the pieces.
double GetDistance(const Piece& a, const Piece& b);

struct Interval
{
    double low;
    double high;
};

/// Appends the parts of \a a, from 0 to 1, that lie within \a distance of \a b.
void AppendNearParts(std::vector<Interval>& parts, const Piece& a, const Piece& b, double distance);

/// Appends the parts, 0 to 1, where a piece meets the line of all points p with Dot(normal, p) == offset, for
/// a normal of length 1.
void AppendCrossings(std::vector<double>& parts, const Piece& piece, Point normal, double offset);

} // namespace ZORNestSolver::Exact
