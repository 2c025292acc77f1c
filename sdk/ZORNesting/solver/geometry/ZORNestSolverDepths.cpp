#include "ZORNestSolverDepths.h"

#include <set>

namespace ZORNestSolver {

namespace {

constexpr size_t kNone = std::numeric_limits<size_t>::max();
constexpr size_t kEventsPerLook = 256; // between two questions whether to go on

/// Orders points from left to right, and above each other from below.
bool IsBefore(Point a, Point b)
{
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

/// Passes a line over the rings, from left to right. Where a ring begins, the edge below it belongs to the ring
/// around it, or to another one in that.
class DepthSweep
{
public:
    explicit DepthSweep(const Polygon& polygon)
        : m_polygon(polygon)
        , m_depths(polygon.size(), kNone)
        , m_active(IsLower{&m_edges})
    {
        for (size_t ring = 0; ring < polygon.size(); ++ring)
            AddEdges(ring);
        for (size_t i = 0; i < m_edges.size(); ++i) {
            m_events.push_back({m_edges[i].left, i, false});
            m_events.push_back({m_edges[i].right, i, true});
        }
        m_places.resize(m_edges.size());
        std::sort(m_events.begin(), m_events.end());
    }

    std::vector<size_t> Run(const Interruption& isOver)
    {
        for (size_t i = 0; i < m_events.size(); ++i) {
            if (i % kEventsPerLook == 0 && isOver())
                return {};
            const Event& event = m_events[i];
            if (event.isEnd)
                m_active.erase(m_places[event.edge]);
            else
                Begin(event.edge);
        }
        std::replace(m_depths.begin(), m_depths.end(), kNone, size_t{0}); // rings of a single point
        return std::move(m_depths);
    }

private:
    struct Edge
    {
        Point left;
        Point right;
        size_t ring;
        bool hasInsideAbove; // whether the ring's inside lies above it
    };
    /// Edges end before others begin at the same point; of those, the lower one begins first.
    struct Event
    {
        Point place;
        size_t edge;
        bool isEnd;

        bool operator<(const Event& other) const
        {
            return place == other.place ? isEnd && !other.isEnd : IsBefore(place, other.place);
        }
    };
    /// Compares edges that the line meets at the same time.
    struct IsLower
    {
        const std::vector<Edge>* edges;

        bool operator()(size_t a, size_t b) const
        {
            const Edge& first = (*edges)[a];
            const Edge& second = (*edges)[b];
            if (IsBefore(first.left, second.left))
                return IsAbove(first, second);
            return !(a == b) && !IsAbove(second, first);
        }
        /// Checks whether an edge lies above another one that begins earlier or at the same point.
        static bool IsAbove(const Edge& lower, const Edge& edge)
        {
            const Point along = lower.right - lower.left;
            const double side = Cross(along, edge.left - lower.left);
            return side != 0 ? side > 0 : Cross(along, edge.right - lower.left) > 0;
        }
    };

    void AddEdges(size_t ring)
    {
        const Ring& points = m_polygon[ring];
        const bool isCounterClockwise = GetSignedArea(points) > 0;
        for (size_t i = 0; i < points.size(); ++i) {
            const Point a = points[i];
            const Point b = points[(i + 1) % points.size()];
            const bool isForward = IsBefore(a, b);
            if (!(a == b))
                m_edges.push_back(
                    {isForward ? a : b, isForward ? b : a, ring, isForward == isCounterClockwise});
        }
    }

    void Begin(size_t edge)
    {
        const auto place = m_active.insert(edge).first;
        m_places[edge] = place;
        size_t& depth = m_depths[m_edges[edge].ring];
        if (depth != kNone)
            return;
        depth = 0;
        if (place == m_active.begin())
            return;
        const Edge& below = m_edges[*std::prev(place)];
        depth = m_depths[below.ring] + (below.hasInsideAbove ? 1 : 0);
    }

    const Polygon& m_polygon;
    std::vector<Edge> m_edges;
    std::vector<Event> m_events;
    std::vector<size_t> m_depths;
    std::set<size_t, IsLower> m_active; // edges that the line meets, from below
    std::vector<std::set<size_t, IsLower>::iterator> m_places;
};

} // namespace

std::vector<size_t> GetDepths(const Polygon& polygon, const Interruption& isOver)
{
    return DepthSweep(polygon).Run(isOver);
}

} // namespace ZORNestSolver
