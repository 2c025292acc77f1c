#include "ZORNestSolverContactPoses.h"

#include "solver/base/ZORNestSolverAngle.h"
#include "solver/geometry/ZORNestSolverOffset.h"

#include <numbers>
#include <numeric>

namespace ZORNestSolver {

namespace {

constexpr size_t kMostPoses = 24;       // of an item
constexpr size_t kLongEdges = 4;        // edges of the hull that are laid along an axis
constexpr size_t kMostRingCorners = 32; // of a ring of an obstacle
constexpr size_t kMostHullCorners = 12; // of an item
constexpr size_t kMostPlaces = 64;      // in corners between obstacles
constexpr size_t kFewestChecks = 8;
constexpr size_t kMostChecks = 300;       // of such places by exact distances
constexpr size_t kMostEdgePairs = 100000; // of all these checks
constexpr size_t kMostEdges = 20000000;   // of obstacles, passed to see whether they cover such places

/// Some corners of the ring, evenly chosen.
Ring Thin(const Ring& ring, size_t most)
{
    Ring thin;
    const size_t count = std::min(most, ring.size());
    for (size_t i = 0; i < count; ++i)
        thin.push_back(ring[i * ring.size() / count]);
    return thin;
}

/// Collects places of an item in the corners that the obstacles of a sheet leave.
class CornerSearch
{
public:
    CornerSearch(const ItemType& type, const SheetArea& area, const Box& usable)
        : m_type(type)
        , m_area(area)
        , m_usable(usable)
    {
        size_t edges = 0;
        for (const Obstacle& obstacle : area.obstacles) {
            for (const Ring& ring : obstacle.onSheet)
                if (GetSignedArea(ring) < 0)
                    m_holes.push_back(GetBox(ring).Grown(-obstacle.distance));
            const Polygon kept =
                obstacle.distance > 0 ? GrowPolygon(obstacle.onSheet, obstacle.distance) : obstacle.onSheet;
            for (const Ring& ring : kept)
                m_rings.push_back(Thin(ring, kMostRingCorners));
            for (const Ring& ring : obstacle.polygon)
                edges += ring.size();
        }
        size_t ownEdges = 0;
        for (const Ring& ring : type.outer)
            ownEdges += ring.size();
        m_checks =
            std::clamp(kMostEdgePairs / std::max(size_t{1}, edges * ownEdges), kFewestChecks, kMostChecks);
        m_looks = std::max(kMostEdges / std::max(size_t{1}, edges), kFewestChecks);
    }

    /// Lays the box of the pose into the corners of the boxes of holes.
    void AddInHoles(const ContactPose& pose)
    {
        for (const Box& hole : m_holes) {
            const Point low = hole.min - pose.box.min;
            const Point high = hole.max - pose.box.max;
            for (const Point position : {low, Point{high.x, low.y}, Point{low.x, high.y}, high})
                Add(pose, position);
        }
    }

    /// Lays corners of the outline onto corners of the obstacles.
    void AddAtCorners(const ContactPose& pose)
    {
        if (m_checks == 0)
            return;
        const Transform turn(m_type.GetPose(pose.poseClass, pose.angle, {}));
        const Ring corners = Thin(GetConvexHull(turn.Apply(m_type.outer)), kMostHullCorners);
        for (const Ring& ring : m_rings)
            for (const Point& end : ring)
                for (const Point& corner : corners)
                    Add(pose, end - corner);
    }

    std::vector<Stand> Take() { return std::move(m_places); }

private:
    void Add(const ContactPose& pose, Point position)
    {
        const bool isKnown = std::any_of(m_places.begin(), m_places.end(), [&](const Stand& stand) {
            return stand.poseClass == pose.poseClass && stand.angle == pose.angle
                   && Length(stand.position - position) <= kContactSlack;
        });
        if (isKnown || m_places.size() >= kMostPlaces || m_checks == 0
            || !m_usable.Grown(kContactSlack).Contains(pose.box.Moved(position)) || m_looks == 0)
            return;
        --m_looks;
        if (IsCovered(position))
            return;
        --m_checks;
        if (m_area.IsClear(
                Transform(m_type.GetPose(pose.poseClass, pose.angle, position)).Apply(m_type.outer)))
            m_places.push_back({position, pose.angle, pose.poseClass, 0});
    }

    /// The reference point lies deep inside of the item.
    bool IsCovered(Point position) const
    {
        return std::any_of(
            m_area.obstacles.begin(), m_area.obstacles.end(),
            [position](const Obstacle& obstacle) { return IsInside(position, obstacle.polygon); });
    }

    const ItemType& m_type;
    const SheetArea& m_area;
    Box m_usable;
    std::vector<Box> m_holes; // what they leave free
    std::vector<Ring> m_rings;
    std::vector<Stand> m_places;
    size_t m_checks = 0; // that are left
    size_t m_looks = 0;  // the same, at what obstacles cover
};

} // namespace

ContactPoses::ContactPoses(const PreparedJob& prepared)
    : m_prepared(prepared)
    , m_poses(prepared.types.size())
{
    std::vector<size_t> all(prepared.job.kinds.size());
    std::iota(all.begin(), all.end(), size_t{0});
    m_kinds = prepared.DropEqual(all);
}

void ContactPoses::Add(size_t item, uint32_t poseClass, double angle)
{
    std::vector<ContactPose>& poses = m_poses[item];
    const bool isKnown = std::any_of(poses.begin(), poses.end(), [&](const ContactPose& pose) {
        return pose.poseClass == poseClass && pose.angle == angle;
    });
    if (isKnown || poses.size() >= kMostPoses)
        return;
    const ItemType& type = *m_prepared.types[item];
    poses.push_back({poseClass, angle, type.GetExactBox(type.GetPose(poseClass, angle, {}))});
}

/// Turns the longest edges of the hull into the directions of the axes, as far as the deviation allows.
void ContactPoses::AddAlongEdges(size_t item, uint32_t poseClass)
{
    const ItemType& type = *m_prepared.types[item];
    const PoseClass& allowed = type.classes[poseClass];
    const Transform flip({allowed.mirrored, 0, {}});
    const Ring hull = GetConvexHull(flip.Apply(type.outer));
    std::vector<Point> edges;
    for (size_t i = 0; i < hull.size(); ++i)
        edges.push_back(hull[(i + 1) % hull.size()] - hull[i]);
    std::stable_sort(edges.begin(), edges.end(), [](Point a, Point b) { return Length(a) > Length(b); });
    edges.resize(std::min(edges.size(), kLongEdges));
    for (const Point& edge : edges) {
        for (int quarter = 0; quarter < 4; ++quarter) {
            const double angle = quarter * std::numbers::pi / 2 - std::atan2(edge.y, edge.x);
            const double off = std::remainder(angle - allowed.angle, kFullTurn);
            if (std::abs(off) <= allowed.deviation)
                Add(item, poseClass, allowed.angle + off);
        }
    }
}

const std::vector<ContactPose>& ContactPoses::Get(size_t item)
{
    if (!m_poses[item].empty())
        return m_poses[item];
    const ItemType& type = *m_prepared.types[item];
    for (const size_t kind : m_kinds)
        if (m_prepared.FitsOn(item, kind) && m_poses[item].size() < kMostPoses)
            if (const auto fitting = FindFitting(type, m_prepared.areas[kind].window))
                Add(item, fitting->poseClass, fitting->angle);
    for (uint32_t c = 0; c < type.classes.size(); ++c) {
        Add(item, c, type.classes[c].angle);
        if (type.classes[c].IsContinuous())
            AddAlongEdges(item, c);
    }
    return m_poses[item];
}

const std::vector<Stand>& ContactPoses::GetCornerPlaces(size_t item, size_t kind)
{
    const auto [entry, isNew] = m_cornerPlaces.try_emplace({item, kind});
    if (isNew) {
        CornerSearch search(*m_prepared.types[item], m_prepared.areas[kind],
                            GetUsableBox(m_prepared.job.kinds[kind], m_prepared.job));
        for (const ContactPose& pose : Get(item))
            search.AddInHoles(pose);
        for (const ContactPose& pose : Get(item))
            search.AddAtCorners(pose);
        entry->second = search.Take();
    }
    return entry->second;
}

} // namespace ZORNestSolver
