// How far an outline of lines and arcs reaches in every direction.

#pragma once

#include "ZORNestSolverArc.h"
#include "ZORNestSolverOutline.h"

#include <array>
#include <optional>

namespace ZORNestSolver {

/// By how much a part may exceed the usable part of its sheet, in millimeters: more than rounding, and less than
/// the depth to which parts may overlap.
constexpr double kFitTolerance = 1e-7;

/// A closed interval of rotations, in radians; both ends are equal where only one rotation serves.
struct AngleRange
{
    double from = 0;
    double to = 0;
};

/// A rotation, in radians, and the length of an outline along x in it.
struct TurnedLength
{
    double angle = 0;
    double length = 0;
};

/// The exact reach of what is drawn, its arcs included: a sinusoid between any two critical directions. Decides
/// exactly on which rotations an outline fits a rectangle.
class Silhouette
{
public:
    Silhouette() = default;
    /// O(n log n) in the number of segments. The contours have finite coordinates.
    explicit Silhouette(const std::vector<Contour>& contours);

    /// Returns the largest product of a point of the outline with the unit vector of the direction.
    double GetReach(double direction) const;
    /// Returns the box of the outline, mirrored and turned about its origin.
    Box GetBox(bool mirrored, double angle) const;

    /// Returns the rotations within \a deviation of \a middle in which the outline is no longer than \a length
    /// along x and no wider than \a width along y, by more than kFitTolerance; ascending, empty if there are none.
    /// \param deviation  at most half a turn
    /// \param length     may be infinite, as \a width may
    std::vector<AngleRange> FindFitting(bool mirrored, double middle, double deviation, double length,
                                        double width) const;

    /// Returns the rotation within \a deviation of \a middle in which the outline is shortest along x, among those
    /// in which it is no wider than \a width along y, by more than kFitTolerance; nothing if there is none.
    /// \param deviation  at most half a turn
    /// \param width      may be infinite
    std::optional<TurnedLength> FindShortest(bool mirrored, double middle, double deviation,
                                             double width) const;

private:
    /// The reach from a direction on, up to that of the next piece: that of a circle, or of a point.
    struct Piece
    {
        double from = 0;
        Point center;
        double radius = 0;

        double GetReach(double direction) const
        {
            return center.x * std::cos(direction) + center.y * std::sin(direction) + radius;
        }
    };
    using Pieces = std::vector<Piece>; // the first one from 0 on, the last one up to a full turn

    static Pieces MakeHullPieces(const Ring& hull);
    static void AddArcPieces(const Arc& arc, std::vector<Pieces>& all);
    static std::array<double, 2> FindCrossings(const Piece& a, const Piece& b);
    static Pieces Merge(const Pieces& a, const Pieces& b);
    static Pieces MergeAll(std::vector<Pieces> all);
    size_t FindPiece(double direction) const;
    /// The extent across, from the reach of a direction to that of the opposite one.
    double GetExtent(double direction) const;
    void AddCriticalDirections(double limit, std::vector<double>& directions) const;
    void AddCriticalAngles(bool mirrored, const AngleRange& range, double limit, double offset,
                           std::vector<double>& angles) const;

    Pieces m_pieces;
};

} // namespace ZORNestSolver
