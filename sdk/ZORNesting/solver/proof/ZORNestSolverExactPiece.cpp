#include "ZORNestSolverExactPiece.h"

#include "solver/model/ZORNestSolverArc.h"

#include <numbers>

namespace ZORNestSolver::Exact {

namespace {

constexpr double kQuarterTurn = std::numbers::pi / 2;
constexpr double kLargestRadius = 1e9;
constexpr double kChordSagitta = 1e-8;
constexpr double kMostChords = 4096;

Point Across(Point p)
{
    return {-p.y, p.x};
}

/// The direction of a vector; of length 0 where it has none.
Point Direction(Point p)
{
    const double length = Length(p);
    return length > 0 ? p * (1 / length) : Point{};
}

/// Whether the direction from the center to a point lies within the arc's.
bool IsInSweep(const Piece& arc, Point p)
{
    const double side = arc.sweep > 0 ? 1 : -1;
    const Point arm = p - arc.center;
    return side * Cross(arc.a - arc.center, arm) >= 0 && side * Cross(arm, arc.b - arc.center) >= 0;
}

/// The part of the arc in the direction of a point of its circle; below 0 or above 1 beyond the ends.
double GetPart(const Piece& arc, Point p)
{
    const Point first = arc.a - arc.center;
    const Point arm = p - arc.center;
    const double side = arc.sweep > 0 ? 1 : -1;
    return std::atan2(side * Cross(first, arm), Dot(first, arm)) / std::abs(arc.sweep);
}

void AppendPart(std::vector<double>& parts, double part)
{
    if (part >= 0 && part <= 1)
        parts.push_back(part);
}

/// Both points of the arc's circle at a height above the center along an axis of length 1.
void AppendAtHeight(std::vector<double>& parts, const Piece& arc, Point axis, double height)
{
    const double squared = (arc.radius - height) * (arc.radius + height);
    if (squared < 0)
        return;
    const Point foot = arc.center + axis * height;
    for (const double half : {std::sqrt(squared), -std::sqrt(squared)})
        AppendPart(parts, GetPart(arc, foot + Across(axis) * half));
}

/// Where a piece meets the circle about \a center.
void AppendCircleCrossings(std::vector<double>& parts, const Piece& piece, Point center, double radius)
{
    if (piece.IsArc()) {
        const Point axis = Direction(center - piece.center);
        const double apart = Length(center - piece.center);
        if (apart > 0) // circles about one center do not cross
            AppendAtHeight(parts, piece, axis,
                           apart / 2 + (piece.radius - radius) * (piece.radius + radius) / (2 * apart));
        return;
    }
    const double length = Length(piece.b - piece.a);
    const Point along = Direction(piece.b - piece.a);
    const double foot = Dot(center - piece.a, along);
    const double height = Cross(along, center - piece.a);
    const double squared = (radius - height) * (radius + height);
    if (squared < 0 || length == 0)
        return;
    AppendPart(parts, (foot + std::sqrt(squared)) / length);
    AppendPart(parts, (foot - std::sqrt(squared)) / length);
}

/// Where \a a meets the line or the circle of \a b, shifted to its left by \a shift.
void AppendCarrierCrossings(std::vector<double>& parts, const Piece& a, const Piece& b, double shift)
{
    if (b.IsArc()) {
        const double radius = b.sweep > 0 ? b.radius - shift : b.radius + shift;
        if (radius > 0)
            AppendCircleCrossings(parts, a, b.center, radius);
        return;
    }
    const Point normal = Across(Direction(b.b - b.a));
    if (normal == Point{})
        return;
    // Relative to the piece, which keeps the digits.
    Piece moved = a;
    moved.a = a.a - b.a;
    moved.b = a.b - b.a;
    moved.center = a.center - b.a;
    AppendCrossings(parts, moved, normal, shift);
}

/// Where \a a may be nearest to \a b, apart from ends: opposite of the center, or of the line.
void AppendFeet(std::vector<double>& parts, const Piece& a, const Piece& b)
{
    if (!a.IsArc() && !b.IsArc())
        return;
    if (!a.IsArc()) {
        const Point along = a.b - a.a;
        AppendPart(parts, Dot(b.center - a.a, along) / Dot(along, along));
        return;
    }
    const Point axis = b.IsArc() ? Direction(b.center - a.center) : Across(Direction(b.b - b.a));
    if (axis == Point{})
        return;
    AppendPart(parts, GetPart(a, a.center + axis * a.radius));
    AppendPart(parts, GetPart(a, a.center - axis * a.radius));
}

double GetLineDistance(Point p, Point a, Point b)
{
    const Point along = b - a;
    const double squared = Dot(along, along);
    const double part = squared > 0 ? std::clamp(Dot(p - a, along) / squared, 0.0, 1.0) : 0.0;
    return Length(p - (a + along * part));
}

void AppendArc(std::vector<Piece>& pieces, const Arc& arc, size_t number)
{
    const bool isFlat = arc.radius > kLargestRadius;
    const double chords = std::abs(arc.sweep) / (2 * std::sqrt(2 * kChordSagitta / arc.radius));
    const double count =
        std::ceil(isFlat ? std::min(chords, kMostChords) : std::abs(arc.sweep) / kQuarterTurn - 1e-9);
    Point from = arc.start;
    for (double i = 1; i <= count; ++i) {
        const Point to = i == count ? arc.reached : arc.Evaluate(i / count);
        if (isFlat)
            pieces.push_back({from, to, {}, 0, 0, number});
        else
            pieces.push_back({from, to, arc.center, arc.radius, arc.sweep / count, number});
        from = to;
    }
}

} // namespace

double Piece::GetLength() const
{
    return IsArc() ? radius * std::abs(sweep) : Length(b - a);
}

Point Piece::Evaluate(double part) const
{
    if (!IsArc())
        return a + (b - a) * part;
    const double half = std::sin(part * sweep / 2);
    const Point arm = a - center;
    return a + arm * (-2 * half * half) + Across(arm) * std::sin(part * sweep);
}

Box Piece::GetBox() const
{
    Box box;
    box.Add(a);
    box.Add(b);
    if (IsArc())
        for (const Point axis : {Point{1, 0}, Point{0, 1}, Point{-1, 0}, Point{0, -1}})
            if (IsInSweep(*this, center + axis))
                box.Add(center + axis * radius);
    return box;
}

double Piece::GetDistance(Point p) const
{
    if (!IsArc())
        return GetLineDistance(p, a, b);
    if (!IsInSweep(*this, p))
        return std::min(Length(p - a), Length(p - b));
    // The difference of the squares, factored: a large radius costs no digits.
    return std::abs(Dot(p - a, (p - center) + (a - center))) / (Length(p - center) + radius);
}

Piece Piece::Placed(const Transform& transform, bool mirrored) const
{
    return {transform.Apply(a),        transform.Apply(b),
            transform.Apply(center),   radius,
            mirrored ? -sweep : sweep, contour};
}

void AppendPieces(std::vector<Piece>& pieces, const Contour& contour, size_t number)
{
    const auto appendLine = [&](Point from, Point to) {
        if (!(from == to))
            pieces.push_back({from, to, {}, 0, 0, number});
    };
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        if (segment.isArc) {
            const Arc arc(from, segment.end, segment.centre, segment.counterClockwise);
            if (!arc.IsChord())
                AppendArc(pieces, arc, number);
            appendLine(arc.reached, segment.end);
        } else {
            appendLine(from, segment.end);
        }
        from = segment.end;
    }
    appendLine(from, contour.start);
}

double GetDistance(const Piece& a, const Piece& b)
{
    thread_local std::vector<double> parts;
    parts.assign({0, 1});
    AppendCarrierCrossings(parts, a, b, 0);
    AppendFeet(parts, a, b);
    double distance = std::min(a.GetDistance(b.a), a.GetDistance(b.b));
    for (const double part : parts)
        distance = std::min(distance, b.GetDistance(a.Evaluate(part)));
    return distance;
}

void AppendNearParts(std::vector<Interval>& nearParts, const Piece& a, const Piece& b, double distance)
{
    thread_local std::vector<double> parts;
    parts.assign({0, 1});
    AppendCarrierCrossings(parts, a, b, distance);
    AppendCarrierCrossings(parts, a, b, -distance);
    AppendCircleCrossings(parts, a, b.a, distance);
    AppendCircleCrossings(parts, a, b.b, distance);
    std::sort(parts.begin(), parts.end());
    for (size_t i = 1; i < parts.size(); ++i)
        if (parts[i] > parts[i - 1] && b.GetDistance(a.Evaluate((parts[i - 1] + parts[i]) / 2)) <= distance)
            nearParts.push_back({parts[i - 1], parts[i]});
}

void AppendCrossings(std::vector<double>& parts, const Piece& piece, Point normal, double offset)
{
    if (piece.IsArc()) {
        AppendAtHeight(parts, piece, normal, offset - Dot(normal, piece.center));
        return;
    }
    const double first = Dot(normal, piece.a) - offset;
    const double last = Dot(normal, piece.b) - offset;
    if (first != last)
        AppendPart(parts, first / (first - last));
}

} // namespace ZORNestSolver::Exact
