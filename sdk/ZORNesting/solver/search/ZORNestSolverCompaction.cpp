#include "ZORNestSolverCompaction.h"

#include "solver/base/ZORNestSolverLinearProgram.h"
#include "solver/proof/ZORNestSolverApart.h"

namespace ZORNestSolver {

namespace {

constexpr size_t kMostItems = 150;
constexpr int kMostRounds = 30;
constexpr double kFirstReach = 0.05;    // of the smallest item's smaller side
constexpr double kSmallestReach = 1e-4; // of the first one
constexpr double kLeastGain = 1e-7;     // of the reach

struct Corner
{
    Point place;
    Point before; // the corners next to it
    Point after;
    bool IsConvex() const { return Cross(place - before, after - place) > 0; }
};

std::vector<Corner> GetCorners(const Polygon& polygon, const Box& within)
{
    std::vector<Corner> corners;
    for (const Ring& ring : polygon)
        for (size_t i = 0; i < ring.size(); ++i)
            if (const Point p = ring[i]; within.Contains(p))
                corners.push_back(
                    {p, ring[(i + ring.size() - 1) % ring.size()], ring[(i + 1) % ring.size()]});
    return corners;
}

bool ProjectsInto(Point p, Point a, Point b)
{
    const double t = Dot(p - a, b - a);
    return t >= 0 && t <= Dot(b - a, b - a);
}

/// Two items must not come nearer to each other along a direction than they may.
struct Contact
{
    Point normal; // unit length, from the second item to the first one
    double gap;   // what they may approach
};

/// The rows of one pair of items.
class ContactFinder
{
public:
    ContactFinder(const Polygon& first, const Polygon& second, double separation, double reach)
        : m_first(first)
        , m_second(second)
        , m_separation(separation)
        , m_reach(separation + reach)
        , m_common(GetCommon())
    {
    }
    std::vector<Contact> Find()
    {
        if (m_common.IsEmpty())
            return {};
        const std::vector<Corner> corners = GetCorners(m_first, m_common);
        const std::vector<Corner> others = GetCorners(m_second, m_common);
        AddCornersAndEdges(corners, m_second, 1);
        AddCornersAndEdges(others, m_first, -1);
        for (const Corner& a : corners)
            for (const Corner& b : others)
                AddCorners(a, b);
        return std::move(m_contacts);
    }

private:
    Box GetCommon() const
    {
        const Box a = GetBox(m_first).Grown(m_reach);
        const Box b = GetBox(m_second).Grown(m_reach);
        return {{std::max(a.min.x, b.min.x), std::max(a.min.y, b.min.y)},
                {std::min(a.max.x, b.max.x), std::min(a.max.y, b.max.y)}};
    }
    void AddCornersAndEdges(const std::vector<Corner>& corners, const Polygon& polygon, double sign)
    {
        for (const Corner& corner : corners)
            if (corner.IsConvex())
                for (const Ring& ring : polygon)
                    for (size_t i = 0; i < ring.size(); ++i)
                        AddCornerAndEdge(corner.place, ring[i], ring[(i + 1) % ring.size()], sign);
    }
    void AddCornerAndEdge(Point corner, Point a, Point b, double sign)
    {
        if (!ProjectsInto(corner, a, b))
            return;
        const Point along = b - a;
        const Point normal = Point{along.y, -along.x} * (1 / Length(along)); // away from the material
        const double distance = Dot(corner - a, normal);
        if (distance >= -kApartTolerance && distance <= m_reach)
            m_contacts.push_back({normal * sign, distance - m_separation});
    }
    void AddCorners(const Corner& a, const Corner& b)
    {
        const Point between = a.place - b.place;
        const double distance = Length(between);
        const bool facesEdge =
            ProjectsInto(a.place, b.before, b.place) || ProjectsInto(a.place, b.place, b.after)
            || ProjectsInto(b.place, a.before, a.place) || ProjectsInto(b.place, a.place, a.after);
        if (distance > 0 && distance <= m_reach && !facesEdge && a.IsConvex() && b.IsConvex())
            m_contacts.push_back({between * (1 / distance), distance - m_separation});
    }

    const Polygon& m_first;
    const Polygon& m_second;
    double m_separation;
    double m_reach;
    Box m_common;
    std::vector<Contact> m_contacts;
};

/// The linear program of one step. Item i moves by the variables 4 i to 4 i + 3: to the right, to the left, up,
/// down. The last variable is what the strip becomes shorter.
class StepProgram
{
public:
    StepProgram(size_t items, double step)
        : m_items(items)
        , m_step(step)
        , m_program(4 * items + 1)
    {
        m_program.SetObjective(4 * items, 1);
        for (size_t i = 0; i < items; ++i) {
            m_program.AddRow({{4 * i, 1}, {4 * i + 1, 1}}, step);
            m_program.AddRow({{4 * i + 2, 1}, {4 * i + 3, 1}}, step);
        }
    }
    void AddContact(size_t first, size_t second, const Contact& contact)
    {
        const Point n = contact.normal;
        m_program.AddRow({{4 * first, -n.x},
                          {4 * first + 1, n.x},
                          {4 * first + 2, -n.y},
                          {4 * first + 3, n.y},
                          {4 * second, n.x},
                          {4 * second + 1, -n.x},
                          {4 * second + 2, n.y},
                          {4 * second + 3, -n.y}},
                         contact.gap);
    }
    void AddBorders(size_t item, const Box& box, const Box& usable)
    {
        if (box.min.x - usable.min.x < m_step)
            m_program.AddRow({{4 * item + 1, 1}, {4 * item, -1}}, box.min.x - usable.min.x);
        if (box.min.y - usable.min.y < m_step)
            m_program.AddRow({{4 * item + 3, 1}, {4 * item + 2, -1}}, box.min.y - usable.min.y);
        if (usable.max.y - box.max.y < m_step)
            m_program.AddRow({{4 * item + 2, 1}, {4 * item + 3, -1}}, usable.max.y - box.max.y);
        if (usable.max.x - box.max.x < 2 * m_step)
            m_program.AddRow({{4 * item, 1}, {4 * item + 1, -1}, {4 * m_items, 1}}, usable.max.x - box.max.x);
    }
    /// The moves of the items; the gain is the x of one more.
    std::vector<Point> Solve(const std::function<bool()>& isOver)
    {
        const std::vector<double> values = m_program.Solve(isOver);
        std::vector<Point> moves;
        for (size_t i = 0; i < m_items; ++i)
            moves.push_back({values[4 * i] - values[4 * i + 1], values[4 * i + 2] - values[4 * i + 3]});
        moves.push_back({values.back(), 0});
        return moves;
    }

private:
    size_t m_items;
    double m_step;
    LinearProgram m_program;
};

} // namespace

Compaction::Compaction(const Problem& problem, double separation, Proof proof)
    : m_problem(problem)
    , m_separation(separation)
    , m_proof(std::move(proof))
{
}

std::vector<Polygon> Compaction::PlaceOutlines(const std::vector<Stand>& stands) const
{
    std::vector<Polygon> outlines;
    for (size_t i = 0; i < stands.size(); ++i) {
        const ItemType& type = *m_problem.types[m_problem.items[i]];
        const Pose pose = type.GetPose(stands[i].poseClass, stands[i].angle, stands[i].position);
        outlines.push_back(Transform(pose).Apply(type.outer));
    }
    return outlines;
}

/// \param reach  up to which distance corners and edges are kept apart; moves are a third of it
std::vector<Stand> Compaction::Step(const std::vector<Stand>& stands, double reach,
                                    const std::function<bool()>& isOver, double& gain) const
{
    const std::vector<Polygon> outlines = PlaceOutlines(stands);
    std::vector<Box> boxes;
    Box usable = m_problem.windows[0].Grown(-m_separation / 2);
    usable.max.x = usable.min.x;
    for (const Polygon& outline : outlines) {
        boxes.push_back(GetBox(outline));
        usable.max.x = std::max(usable.max.x, boxes.back().max.x);
    }
    StepProgram program(stands.size(), reach / 3);
    for (size_t i = 0; i < outlines.size(); ++i) {
        program.AddBorders(i, boxes[i], usable);
        for (size_t k = i + 1; k < outlines.size(); ++k)
            if (boxes[i].Grown(m_separation + reach).Overlaps(boxes[k]))
                for (const Contact& contact :
                     ContactFinder(outlines[i], outlines[k], m_separation, reach).Find())
                    program.AddContact(i, k, contact);
    }
    const std::vector<Point> moves = program.Solve(isOver);
    std::vector<Stand> moved = stands;
    for (size_t i = 0; i < stands.size(); ++i)
        moved[i].position = stands[i].position + moves[i];
    gain = moves.back().x;
    return moved;
}

std::vector<Stand> Compaction::Shorten(std::vector<Stand> stands, const std::function<bool()>& isOver) const
{
    if (stands.size() > kMostItems || stands.empty() || !m_problem.hazards.empty())
        return stands;
    double side = std::numeric_limits<double>::infinity();
    for (const size_t type : m_problem.items)
        side = std::min(side, m_problem.types[type]->smallerSide);
    double reach = kFirstReach * side;
    for (int round = 0; round < kMostRounds && reach > kSmallestReach * kFirstReach * side && !isOver();
         ++round) {
        double gain = 0;
        std::vector<Stand> moved = Step(stands, reach, isOver, gain);
        if (gain > kLeastGain * reach && m_proof(moved))
            stands = std::move(moved);
        else
            reach /= 4;
    }
    return stands;
}

} // namespace ZORNestSolver
