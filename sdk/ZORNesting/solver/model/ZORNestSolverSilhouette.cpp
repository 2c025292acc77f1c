#include "ZORNestSolverSilhouette.h"

#include "ZORNestSolverArc.h"
#include "solver/base/ZORNestSolverAngle.h"
#include "solver/geometry/ZORNestSolverPose.h"

#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr double kFlatness = 1e-8; // by which tangents may exceed an arc about a far center
constexpr double kMostTangents = 1024;
constexpr double kNowhere = -std::numeric_limits<double>::infinity();
constexpr double kSameDirection = 1e-8; // an arc reaches no farther than its end, but for 1e-16 of its radius
constexpr double kSlack = 0.5 * kFitTolerance; // the other half covers rounding where a box is computed

/// Turns an angle into [0, 2 pi).
double Wrapped(double angle)
{
    const double rest = std::fmod(angle, kFullTurn);
    const double wrapped = rest < 0 ? rest + kFullTurn : rest;
    return wrapped < kFullTurn ? wrapped : 0;
}

/// A direction of the outline goes with the rotation of a mirrored outline, and against that of any other.
double GetSense(bool mirrored)
{
    return mirrored ? 1 : -1;
}

/// Adds the meeting points of tangents around the arc, where its circle is too large for its own piece.
void AddTangentCorners(const Arc& arc, Ring& points)
{
    const double bulge = arc.radius * arc.sweep * arc.sweep / 8;
    const double steps = std::clamp(std::ceil(std::sqrt(bulge / kFlatness)), 1.0, kMostTangents);
    const double half = std::min(std::abs(arc.sweep) / steps / 2, 1.0);
    for (double i = 0; i < steps; ++i) {
        const Point middle = arc.Evaluate((i + 0.5) / steps);
        points.push_back(middle + (middle - arc.center) * (1 / std::cos(half) - 1));
    }
}

/// Checks whether a convex ring holds a point, in O(log n).
bool IsInHull(const Ring& hull, Point p)
{
    if (hull.size() < 3)
        return false;
    const Point arm = p - hull[0];
    size_t low = 1;
    size_t high = hull.size() - 1;
    if (Cross(hull[low] - hull[0], arm) < 0 || Cross(hull[high] - hull[0], arm) > 0)
        return false;
    while (high - low > 1) {
        const size_t middle = (low + high) / 2;
        (Cross(hull[middle] - hull[0], arm) >= 0 ? low : high) = middle;
    }
    return Cross(hull[high] - hull[low], p - hull[low]) >= 0;
}

/// Checks whether the arc, of at most a quarter turn, lies in the hull with certainty.
bool IsArcInHull(const Arc& arc, const Ring& hull)
{
    if (std::abs(arc.sweep) > kQuarterTurn)
        return false;
    const Point middle = arc.Evaluate(0.5);
    const double secant = 1 / std::cos(arc.sweep / 2);
    return IsInHull(hull, arc.center + (middle - arc.center) * secant);
}

} // namespace

Silhouette::Silhouette(const std::vector<Contour>& contours)
{
    Ring points;
    std::vector<Arc> arcs;
    for (const Contour& contour : contours) {
        points.push_back(contour.start);
        Point from = contour.start;
        for (const Segment& segment : contour.segments) {
            points.push_back(segment.end);
            if (segment.isArc) {
                const Arc arc(from, segment.end, segment.centre, segment.counterClockwise);
                points.push_back(arc.reached);
                if (arc.radius >= Arc::kFarCenter)
                    AddTangentCorners(arc, points);
                else if (!arc.IsChord())
                    arcs.push_back(arc);
            }
            from = segment.end;
        }
    }
    const Ring hull = GetConvexHull({points});
    std::vector<Pieces> all;
    for (const Arc& arc : arcs)
        if (!IsArcInHull(arc, hull))
            AddArcPieces(arc, all);
    all.push_back(MakeHullPieces(hull));
    m_pieces = MergeAll(std::move(all));
}

Silhouette::Pieces Silhouette::MakeHullPieces(const Ring& hull)
{
    Pieces pieces;
    for (size_t i = 0; i < hull.size(); ++i) {
        const Point in = hull[i] - hull[(i + hull.size() - 1) % hull.size()];
        const double normal = hull.size() > 1 ? std::atan2(-in.x, in.y) : 0; // of the edge before the corner
        pieces.push_back({Wrapped(normal), hull[i], 0});
    }
    std::sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) { return a.from < b.from; });
    if (!pieces.empty() && pieces.front().from > 0)
        pieces.insert(pieces.begin(), {0, pieces.back().center, 0});
    return pieces;
}

/// The piece of the arc, with nothing before and after it.
void Silhouette::AddArcPieces(const Arc& arc, std::vector<Pieces>& all)
{
    const Piece nothing{0, {}, kNowhere};
    if (std::abs(arc.sweep) >= kFullTurn) {
        all.push_back({{0, arc.center, arc.radius}});
        return;
    }
    const double first = Wrapped(arc.sweep > 0 ? arc.startAngle : arc.startAngle + arc.sweep);
    const double last = first + std::abs(arc.sweep);
    Pieces pieces;
    if (last <= kFullTurn)
        pieces = {nothing, {first, arc.center, arc.radius}, {last, {}, kNowhere}};
    else
        pieces = {
            {0, arc.center, arc.radius}, {last - kFullTurn, {}, kNowhere}, {first, arc.center, arc.radius}};
    all.push_back(std::move(pieces));
}

/// The directions between two others at which both pieces reach equally far, if they do.
std::array<double, 2> Silhouette::FindCrossings(const Piece& a, const Piece& b)
{
    const Point between = a.center - b.center;
    const double cosine = (b.radius - a.radius) / Length(between);
    if (!(std::abs(cosine) <= 1))
        return {kNowhere, kNowhere};
    const double direction = std::atan2(between.y, between.x);
    const double opening = std::acos(cosine);
    return {Wrapped(direction - opening), Wrapped(direction + opening)};
}

Silhouette::Pieces Silhouette::Merge(const Pieces& a, const Pieces& b)
{
    Pieces merged;
    const auto append = [&merged](const Piece& piece, double from) {
        const bool goesOn =
            !merged.empty() && merged.back().center == piece.center && merged.back().radius == piece.radius;
        if (!goesOn)
            merged.push_back({from, piece.center, piece.radius});
    };
    size_t i = 0;
    size_t k = 0;
    for (double from = 0; from < kFullTurn;) {
        while (i + 1 < a.size() && a[i + 1].from <= from)
            ++i;
        while (k + 1 < b.size() && b[k + 1].from <= from)
            ++k;
        double to = kFullTurn;
        if (i + 1 < a.size())
            to = a[i + 1].from;
        if (k + 1 < b.size())
            to = std::min(to, b[k + 1].from);
        std::array<double, 2> crossings = FindCrossings(a[i], b[k]);
        std::sort(crossings.begin(), crossings.end());
        for (const double end : {crossings[0], crossings[1], to}) {
            if (end <= from || end > to)
                continue;
            const double middle = (from + end) / 2;
            append(a[i].GetReach(middle) >= b[k].GetReach(middle) ? a[i] : b[k], from);
            from = end;
        }
    }
    return merged;
}

/// Merges neighbors until one is left, so that every piece is visited O(log n) times.
Silhouette::Pieces Silhouette::MergeAll(std::vector<Pieces> all)
{
    while (all.size() > 1) {
        std::vector<Pieces> next;
        for (size_t i = 0; i + 1 < all.size(); i += 2)
            next.push_back(Merge(all[i], all[i + 1]));
        if (all.size() % 2 == 1)
            next.push_back(std::move(all.back()));
        all = std::move(next);
    }
    return std::move(all.front());
}

size_t Silhouette::FindPiece(double direction) const
{
    const auto next = std::upper_bound(m_pieces.begin(), m_pieces.end(), direction,
                                       [](double value, const Piece& piece) { return value < piece.from; });
    return next == m_pieces.begin() ? 0 : static_cast<size_t>(next - m_pieces.begin()) - 1;
}

/// The pieces next to the right one count as well: at a critical direction, rounding may pick the wrong one.
double Silhouette::GetReach(double direction) const
{
    const double wrapped = Wrapped(direction);
    const Point unit = Transform({false, wrapped, {}}).Apply(Point{1, 0}); // exact at quarter turns
    const size_t count = m_pieces.size();
    if (count == 0)
        return kNowhere;
    const size_t middle = FindPiece(wrapped);
    double reach = kNowhere;
    for (const size_t i : {middle, (middle + 1) % count, (middle + count - 1) % count}) {
        const Piece& piece = m_pieces[i];
        const double beyond = std::abs(std::remainder(piece.from - wrapped, kFullTurn));
        const double end = i + 1 < count ? m_pieces[i + 1].from : kFullTurn;
        const double before = std::abs(std::remainder(end - wrapped, kFullTurn));
        if (i == middle || piece.radius == 0 || std::min(beyond, before) < kSameDirection)
            reach = std::max(reach, Dot(piece.center, unit) + piece.radius);
    }
    return reach;
}

Box Silhouette::GetBox(bool mirrored, double angle) const
{
    // A direction of the sheet, turned back and mirrored, is one of the outline.
    const double right = mirrored ? angle + 2 * kQuarterTurn : -angle;
    const double up = mirrored ? angle + kQuarterTurn : kQuarterTurn - angle;
    return {{-GetReach(right + 2 * kQuarterTurn), -GetReach(up + 2 * kQuarterTurn)},
            {GetReach(right), GetReach(up)}};
}

double Silhouette::GetExtent(double direction) const
{
    return GetReach(direction) + GetReach(direction + std::numbers::pi);
}

/// Adds, within half a turn, the directions at which the extent changes its form, is least in between, or equals
/// the limit.
void Silhouette::AddCriticalDirections(double limit, std::vector<double>& directions) const
{
    constexpr double kHalf = std::numbers::pi;
    std::vector<double> starts{0, kHalf};
    for (const Piece& piece : m_pieces)
        starts.push_back(piece.from < kHalf ? piece.from : piece.from - kHalf);
    std::sort(starts.begin(), starts.end());
    directions.insert(directions.end(), starts.begin(), starts.end());
    for (size_t i = 0; i + 1 < starts.size(); ++i) {
        const double middle = (starts[i] + starts[i + 1]) / 2;
        const Piece& first = m_pieces[FindPiece(middle)];
        const Piece& second = m_pieces[FindPiece(middle + kHalf)];
        const Point between = first.center - second.center;
        const double top = std::atan2(between.y, between.x);
        const double cosine = (limit - first.radius - second.radius) / Length(between);
        const double opening = std::abs(cosine) <= 1 ? std::acos(cosine) : 0;
        for (const double direction : {top + kHalf, top - opening, top + opening}) {
            const double wrapped = Wrapped(direction);
            if (wrapped > starts[i] && wrapped < starts[i + 1])
                directions.push_back(wrapped);
        }
    }
}

/// Adds the rotations of a range that turn critical directions to the x axis, or by \a offset beyond it.
void Silhouette::AddCriticalAngles(bool mirrored, const AngleRange& range, double limit, double offset,
                                   std::vector<double>& angles) const
{
    constexpr double kHalf = std::numbers::pi;
    std::vector<double> directions;
    AddCriticalDirections(limit, directions);
    for (const double direction : directions) {
        const double angle = GetSense(mirrored) * (direction - offset);
        for (double k = std::ceil((range.from - angle) / kHalf); angle + k * kHalf <= range.to; ++k)
            angles.push_back(angle + k * kHalf);
    }
}

std::vector<AngleRange> Silhouette::FindFitting(bool mirrored, double middle, double deviation, double length,
                                                double width) const
{
    constexpr double kHalf = std::numbers::pi;
    const double sense = GetSense(mirrored);
    const AngleRange allowed{middle - deviation, middle + deviation};
    std::vector<double> angles{allowed.from, middle, allowed.to};
    if (std::isfinite(length))
        AddCriticalAngles(mirrored, allowed, length, 0, angles);
    if (std::isfinite(width))
        AddCriticalAngles(mirrored, allowed, width, kHalf / 2, angles);
    std::sort(angles.begin(), angles.end());
    const auto fits = [&](double angle) {
        return GetExtent(sense * angle) <= length + kSlack
               && GetExtent(sense * angle + kHalf / 2) <= width + kSlack;
    };
    std::vector<AngleRange> ranges;
    double last = std::numeric_limits<double>::infinity(); // the last angle if it fits
    for (const double angle : angles) {
        if (!fits(angle)) {
            last = std::numeric_limits<double>::infinity();
            continue;
        }
        if (std::isfinite(last) && fits((last + angle) / 2))
            ranges.back().to = angle;
        else
            ranges.push_back({angle, angle});
        last = angle;
    }
    return ranges;
}

std::optional<TurnedLength> Silhouette::FindShortest(bool mirrored, double middle, double deviation,
                                                     double width) const
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::optional<TurnedLength> shortest;
    for (const AngleRange& range : FindFitting(mirrored, middle, deviation, kInfinity, width)) {
        std::vector<double> angles{range.from, range.to};
        AddCriticalAngles(mirrored, range, kInfinity, 0, angles);
        for (const double angle : angles)
            if (const double length = GetExtent(GetSense(mirrored) * angle);
                !shortest || length < shortest->length)
                shortest = {angle, length};
    }
    return shortest;
}

} // namespace ZORNestSolver
