#include "ZORGeoArcWalk_p.h"
#include "ZORGeoPathTurns_p.h"
#include "trace/ZORGeoWalk_p.h"
#include "walk/ZORGeoVertexFan_p.h"

#include <ZORMathematics/ZORMathFunctions.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

using std::numbers::pi;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// Triangles lower than this part of the side by which they are entered are passed on their line.
constexpr double kFlatHeight = 1e-11;
// Meetings count up to this part of a segment, or of a step, beyond its ends.
constexpr double kMeetingTolerance = 1e-11;
constexpr double kPointAngle = pi / 1800;
// Below this the series of the arc tangent ends within rounding after five terms. Most steps are as short.
constexpr double kSmallTangent = 0.02;

// A triangle measured once for all that a step asks of it.
struct Corners
{
    Corners(const ZORGeoMesh& mesh, int triangle)
    {
        const ZORGeoMesh::Corners& corners = mesh.triangles[triangle];
        for (size_t i = 0; i < 3; ++i)
            points[i] = mesh.vertices[corners[i]];
    }
    ZORMathVector GetSide(int side) const { return points[(side + 1) % 3] - points[side]; }
    ZORMathVector GetTwiceAreaNormal() const { return Cross(points[1] - points[0], points[2] - points[0]); }

    ZORMathPoint points[3];
};

// The place of a point that lies in the plane of a triangle with an area.
ZORGeoMeshPlace PlaceInside(const ZORGeoMesh& mesh, int triangle, const ZORMathPoint& point)
{
    const ZORMathPoint a = mesh.GetCorner(triangle, 0);
    const ZORMathVector b = ZorGeoSideVector(mesh, triangle, 0);
    const ZORMathVector c = mesh.GetCorner(triangle, 2) - a;
    const ZORMathVector normal = Cross(b, c);
    const double squared = Dot(normal, normal);
    return ZorGeoSnapPlace(mesh, triangle, Dot(Cross(point - a, c), normal) / squared,
                           Dot(Cross(b, point - a), normal) / squared);
}

// Both roots of a w^2 + 2 b w + c = 0, the smaller first; infinite ones where there are none.
std::array<double, 2> SolveQuadratic(double a, double b, double c)
{
    const double discriminant = b * b - a * c;
    if (!(discriminant >= 0))
        return {kInfinity, kInfinity};
    const double q = -(b + (b < 0 ? -1 : 1) * std::sqrt(discriminant));
    std::array<double, 2> roots = {q != 0 ? c / q : 0, a != 0 ? q / a : kInfinity};
    if (roots[1] < roots[0])
        std::swap(roots[0], roots[1]);
    return roots;
}

} // namespace

ZORGeoArcWalk::ZORGeoArcWalk(const ZORGeoMesh& mesh, double curvature)
    : m_mesh(mesh)
    , m_curvature(curvature)
{
}

double ZORGeoArcWalk::LengthOf(double w) const
{
    const double t = m_curvature * w;
    if (t < kSmallTangent) {
        const double square = t * t;
        return 2 * w * (1 - square * (1.0 / 3 - square * (1.0 / 5 - square * (1.0 / 7 - square / 9))));
    }
    return 2 * std::atan(t) / m_curvature;
}

ZORGeoArcWalk::State ZORGeoArcWalk::StateAt(const ZORGeoArcStart& start) const
{
    return {start.place, start.direction, start.inward,
            Corners(m_mesh, start.place.triangle).GetTwiceAreaNormal().GetNormalized(), -1};
}

// The point at the angle 2 atan(k w), with the height over a line through the start
// (h + 2 s w + (h k^2 + 2 b k) w^2) / (1 + k^2 w^2), s and b the slopes of the direction and of inward.
ZORMathPoint ZORGeoArcWalk::PointAt(const State& state, double w) const
{
    const double t = m_curvature * w;
    const double scale = 2 * w / (1 + t * t);
    return state.place.point + scale * state.direction + scale * t * state.inward;
}

void ZORGeoArcWalk::Turn(State& state, double w) const
{
    const double t = m_curvature * w;
    const double cosine = (1 - t * t) / (1 + t * t);
    const double sine = 2 * t / (1 + t * t);
    const ZORMathVector direction = cosine * state.direction + sine * state.inward;
    state.inward = cosine * state.inward - sine * state.direction;
    state.direction = direction;
}

// The first w above 0 at which the arc goes below a side that it is above of or on.
double ZORGeoArcWalk::SmallestExit(double height, double slope, double bend) const
{
    const double squared = height * m_curvature * m_curvature + 2 * bend * m_curvature;
    if (height <= 0) { // on the side: where it comes back, if it leaves it inwards
        if (slope < 0 || (slope == 0 && bend * m_curvature < 0))
            return 0;
        return squared < 0 ? -2 * slope / squared : kInfinity;
    }
    // Of the roots of squared w^2 + 2 slope w + height; a form in which nothing cancels.
    const double discriminant = slope * slope - squared * height;
    if ((slope >= 0 && squared >= 0) || !(discriminant >= 0))
        return kInfinity;
    const double q = std::sqrt(discriminant) + std::abs(slope);
    return slope < 0 ? height / q : -q / squared;
}

ZORGeoArcWalk::Step ZORGeoArcWalk::FindStep(const State& state) const
{
    const int triangle = state.place.triangle;
    // At most a quarter turn in a step: the circle is simple to follow then.
    Step step;
    step.w = m_curvature > 0 ? std::tan(pi / 8) / m_curvature : kInfinity;
    const Corners corners(m_mesh, triangle);
    for (int side = 0; side < 3; ++side) {
        // Points to the third corner, as long as the side: the roots do not depend on its length.
        const ZORMathVector inward = Cross(state.normal, corners.GetSide(side));
        if (inward == ZORMathVector())
            continue;
        const double slope = Dot(state.direction, inward);
        double height = Dot(state.place.point - corners.points[side], inward);
        if (side == state.side || state.place.IsOnSide(side))
            height = 0;
        // Entered by this side it can only be left where the arc comes back to it.
        if (side == state.side && slope <= 0)
            continue;
        const double w = SmallestExit(height, slope, Dot(state.inward, inward));
        if (w >= step.w)
            continue;
        step.w = w;
        step.side = side;
    }
    if (step.side < 0)
        return step;
    const ZORMathVector along = corners.GetSide(step.side);
    const ZORMathPoint from = corners.points[step.side];
    step.t = std::clamp(Dot(PointAt(state, step.w) - from, along) / Dot(along, along), 0.0, 1.0);
    if (step.t <= ZORGeoMeshWalker::kSnap)
        step.corner = step.side;
    else if (step.t >= 1 - ZORGeoMeshWalker::kSnap)
        step.corner = (step.side + 1) % 3;
    // An arc that leaves a corner along a side and turns over it has not come to the corner.
    if (step.corner >= 0 && step.corner == ZorGeoCornerOfPlace(state.place)) {
        step.t = step.corner == step.side ? 0 : 1;
        step.corner = -1;
    }
    return step;
}

std::optional<ZORGeoArcWalk::Meeting> ZORGeoArcWalk::FindMeeting(const State& state, const Step& step,
                                                                 const ZORGeoPathSegments& path,
                                                                 double minimum, double& w) const
{
    const std::vector<size_t>* const segments = path.Find(state.place.triangle);
    if (!segments)
        return std::nullopt;
    const ZORMathVector normal = Cross(state.direction, state.inward);
    std::optional<Meeting> first;
    w = step.w * (1 + kMeetingTolerance);
    for (const size_t segment : *segments) {
        const ZORMathPoint& from = path.GetPath()[segment].point;
        const ZORMathVector along = path.GetPath()[segment + 1].point - from;
        const double squared = Dot(along, along);
        const ZORMathVector across = Cross(normal, along).GetNormalized();
        if (!(squared > 0))
            continue;
        const double height = Dot(state.place.point - from, across);
        const double slope = Dot(state.direction, across);
        const double bend = Dot(state.inward, across);
        const auto roots =
            SolveQuadratic(height * m_curvature * m_curvature + 2 * bend * m_curvature, slope, height);
        const auto placeAt = [&](double root) { return Dot(PointAt(state, root) - from, along) / squared; };
        const auto isMeeting = [&](double root) {
            if (!(root >= 0 && LengthOf(root) >= minimum && root <= step.w * (1 + kMeetingTolerance)))
                return false;
            const double u = placeAt(root);
            return u >= -kMeetingTolerance && u <= 1 + kMeetingTolerance;
        };
        double root = roots[0];
        if (isMeeting(roots[0]) && isMeeting(roots[1]))
            root = (roots[0] + roots[1]) / 2;
        else if (!isMeeting(roots[0]))
            root = roots[1];
        if (!isMeeting(root) || (first && root >= w))
            continue;
        w = root;
        first = Meeting{segment, std::clamp(placeAt(root), 0.0, 1.0), 0};
    }
    return first;
}

double ZORGeoArcWalk::AngleToPath(State state, double w, const ZORGeoPathSegments& path, size_t segment) const
{
    Turn(state, w);
    const ZORMathVector along = path.GetPath()[segment + 1].point - path.GetPath()[segment].point;
    return std::atan2(Dot(along, state.inward), Dot(along, state.direction));
}

// Appends the places of a step but for its first and last one.
void ZORGeoArcWalk::Append(const State& state, double end, ZORGeoMeshPath& arc) const
{
    if (!(m_curvature > 0))
        return;
    const double angle = 2 * std::atan(m_curvature * end);
    const int pieces = int(std::ceil(angle / kPointAngle - 1e-9));
    for (int i = 1; i < pieces; ++i) {
        const double w = std::tan(angle * i / pieces / 2) / m_curvature;
        arc.push_back(PlaceInside(m_mesh, state.place.triangle, PointAt(state, w)));
    }
}

// Enters the triangle behind a side, and those behind it as long as they have no height.
bool ZORGeoArcWalk::CrossSide(State& state, const Step& step, ZORGeoMeshPath* arc) const
{
    int side = step.side;
    double t = step.t;
    const ZORMathVector along = Corners(m_mesh, state.place.triangle).GetSide(side);
    const ZORMathVector inward = Cross(state.normal, along);
    const double squared = Dot(along, along);
    for (int flat = 0; flat < 1000; ++flat) {
        const int triangle = state.place.triangle;
        const quint32 neighbor = m_mesh.GetNeighbor(triangle, side);
        if (neighbor == 0)
            return false;
        const int next = int(neighbor / 4) - 1;
        const int entered = int(neighbor % 4);
        const bool isReversed =
            m_mesh.triangles[next][size_t(entered)] != m_mesh.triangles[triangle][size_t(side)];
        t = isReversed ? 1 - t : t;
        state.place = ZorGeoPlaceOnSide(m_mesh, next, entered, t);
        state.side = entered;
        const Corners corners(m_mesh, next);
        const ZORMathVector enteredSide = corners.GetSide(entered);
        const ZORMathVector normal = corners.GetTwiceAreaNormal();
        if (const double area = normal.GetLength(); area > kFlatHeight * Dot(enteredSide, enteredSide)) {
            state.normal = (1 / area) * normal;
            const ZORMathVector ahead = Cross(state.normal, enteredSide);
            // Both sides are the same one unless flat triangles lie between them.
            const double scale = 1 / squared;
            const double across = flat == 0 ? scale : std::sqrt(scale / Dot(enteredSide, enteredSide));
            const auto unfold = [&](const ZORMathVector& v) {
                return (Dot(v, along) * scale) * along - (Dot(v, inward) * across) * ahead;
            };
            state.direction = unfold(state.direction);
            state.inward = unfold(state.inward);
            return true;
        }
        // The third corner lies on the line: leaves by the side that lies under the place.
        if (arc)
            arc->push_back(state.place);
        const ZORMathVector apex = corners.points[(entered + 2) % 3] - corners.points[entered];
        const double apexT = Dot(apex, enteredSide) / Dot(enteredSide, enteredSide);
        const bool isOverLast = apexT > 0 && t <= apexT; // over the side from the apex to the first corner
        side = isOverLast ? (entered + 2) % 3 : (entered + 1) % 3;
        t = std::clamp(isOverLast ? 1 - t / apexT : (t - 1) / (apexT - 1), 0.0, 1.0);
    }
    return false;
}

bool ZORGeoArcWalk::PassCorner(State& state, int corner) const
{
    const bool isOwnSide = Dot(Cross(state.direction, state.inward), state.normal) > 0;
    const ZORGeoMeshEntry entry = ZorGeoFanEntry(state.place.triangle, corner, isOwnSide);
    const ZORGeoVertexFan fan(m_mesh, entry);
    const ZORMathVector right =
        m_mesh.GetCorner(entry.triangle, entry.q) - m_mesh.GetCorner(entry.triangle, corner);
    const double back = AngleBetween(-right, state.direction);
    const auto departure = fan.GoStraight(fan.GetFirstAngle() + back);
    if (!departure)
        return false;
    const auto start = ZorGeoMakeArcStart(m_mesh, ZorGeoStartAt(departure->entry, departure->heading));
    if (!start)
        return false;
    state = StateAt(*start);
    return true;
}

std::optional<ZORGeoArcStart> ZorGeoMakeArcStart(const ZORGeoMesh& mesh, const ZORGeoWalkStart& start)
{
    const ZORGeoMeshEntry& entry = start.entry;
    const ZORMathPoint p = mesh.GetCorner(entry.triangle, entry.p);
    const ZORMathVector side = mesh.GetCorner(entry.triangle, entry.q) - p;
    const ZORMathVector apex = mesh.GetCorner(entry.triangle, entry.r) - p;
    const ZORMathVector normal = Cross(side, apex).GetNormalized();
    if (normal == ZORMathVector())
        return std::nullopt;
    const ZORMathVector across = Cross(normal, side);
    const ZORMathVector direction = start.heading.along * side + start.heading.across * across;
    ZORGeoArcStart result;
    result.place = ZorGeoSnapPlace(mesh, entry.triangle, start.weights[1], start.weights[2]);
    result.direction = direction.GetNormalized();
    result.inward = Cross(normal, result.direction);
    return result;
}

std::optional<ZORGeoArcWalk::Meeting> ZORGeoArcWalk::Meet(const ZORGeoArcStart& start, const Bounds& bounds,
                                                          const ZORGeoPathSegments& path,
                                                          ZORGeoMeshPath* arc) const
{
    State state = StateAt(start);
    const double end = m_curvature > 0 ? std::min(bounds.maximum, 2 * pi / m_curvature) : bounds.maximum;
    const qint64 cap = ZorGeoGetMaximumCrossings(m_mesh);
    if (arc)
        arc->assign(1, state.place);
    double length = 0;
    for (qint64 crossed = 0; length <= end && crossed < cap; ++crossed) {
        const Step step = FindStep(state);
        if (!std::isfinite(step.w))
            return std::nullopt;
        double w = 0;
        if (auto meeting = FindMeeting(state, step, path, bounds.minimum - length, w)) {
            meeting->length = length + LengthOf(w);
            if (meeting->length > end)
                return std::nullopt;
            meeting->angle = AngleToPath(state, w, path, meeting->segment);
            if (arc) {
                Append(state, w, *arc);
                const ZORMathPoint a = path.GetPath()[meeting->segment].point;
                ZORGeoMeshPlace last = state.place;
                last.point = a + meeting->u * (path.GetPath()[meeting->segment + 1].point - a);
                arc->push_back(last);
            }
            return meeting;
        }
        if (arc)
            Append(state, step.w, *arc);
        length += LengthOf(step.w);
        const ZORMathPoint point = PointAt(state, step.w);
        Turn(state, step.w);
        if (step.corner >= 0) {
            if (!PassCorner(state, step.corner))
                return std::nullopt;
        } else if (step.side >= 0) {
            if (!CrossSide(state, step, arc))
                return std::nullopt;
        } else {
            state.place = PlaceInside(m_mesh, state.place.triangle, point);
            state.side = -1;
        }
        if (arc)
            arc->push_back(state.place);
    }
    return std::nullopt;
}
