#include "ZORNestSolverPoles.h"

#include "solver/base/ZORNestSolverVector.h"

#include <queue>

#include <array>
#include <numbers>
#include <optional>

namespace ZORNestSolver {

namespace {

constexpr int kDeepestLevel = 12;
constexpr size_t kMostCells = 60000;
constexpr size_t kFewestCells = 500;
constexpr size_t kMostDistances = 30000000; // of cells from edges: outlines of many edges get fewer cells
constexpr double kAccuracy = 0.01;
constexpr double kEdgesOfASquare = 200;         // take as long as a square itself
constexpr std::array kHeights{0.5, 0.25, 0.75}; // of lines through a polygon

/// How far a point lies inside of a polygon.
class DepthField
{
public:
    explicit DepthField(const Polygon& polygon);
    double GetDepth(Point p) const;
    size_t GetEdgeCount() const { return m_x.size(); }

private:
    std::vector<double> m_x, m_y, m_dx, m_dy, m_inverse, m_slope, m_endY; // of edges, in fours
};

DepthField::DepthField(const Polygon& polygon)
{
    for (const Ring& ring : polygon) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point a = ring[i];
            const Point along = ring[(i + 1) % ring.size()] - a;
            const double squared = Dot(along, along);
            m_x.push_back(a.x);
            m_y.push_back(a.y);
            m_dx.push_back(along.x);
            m_dy.push_back(along.y);
            m_endY.push_back(ring[(i + 1) % ring.size()].y);
            m_inverse.push_back(squared > 0 ? 1 / squared : 0);
            m_slope.push_back(along.y != 0 ? along.x / along.y : 0);
        }
    }
    while (m_x.size() % 4 != 0) // edges that are nowhere
        for (auto* array : {&m_x, &m_y, &m_dx, &m_dy, &m_inverse, &m_slope, &m_endY})
            array->push_back(std::numeric_limits<double>::quiet_NaN());
}

ZOR_VECTOR_CLONES
double DepthField::GetDepth(Point p) const
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Quad nearest{kInfinity, kInfinity, kInfinity, kInfinity};
    QuadMask odd{};
    for (size_t i = 0; i < m_x.size(); i += 4) {
        const Quad px = p.x - At(&m_x[i]);
        const Quad py = p.y - At(&m_y[i]);
        const Quad dx = At(&m_dx[i]);
        const Quad dy = At(&m_dy[i]);
        Quad t = (px * dx + py * dy) * At(&m_inverse[i]);
        t = t > 0 ? t : Quad{};
        t = t < 1 ? t : Quad{} + 1;
        const Quad ex = px - t * dx;
        const Quad ey = py - t * dy;
        const Quad squared = ex * ex + ey * ey;
        nearest = squared < nearest ? squared : nearest;
        odd ^= ((At(&m_y[i]) > p.y) ^ (At(&m_endY[i]) > p.y)) & (px < py * At(&m_slope[i]));
    }
    const double least = std::min(std::min(nearest[0], nearest[1]), std::min(nearest[2], nearest[3]));
    const bool isInside = ((odd[0] ^ odd[1] ^ odd[2] ^ odd[3]) & 1) != 0;
    return std::sqrt(least) * (isInside ? 1 : -1);
}

/// A square of a tree that grows where circles were searched for and serves for the next ones too.
struct Cell
{
    Point centre;
    double half = 0;
    double depth = 0; // of the centre inside of the polygon, and outside of the circles looked at so far
    size_t circles = 0;
    size_t children = 0; // index of the first of four; 0: none yet
    int level = 0;
    double GetBound() const { return depth + half * std::numbers::sqrt2; } // no point of it lies deeper
};

class PoleSearch
{
public:
    /// \param squares  that may be tried
    PoleSearch(const Polygon& polygon, double squares);
    Circle FindDeepest();
    /// Returns the squares that were tried so far, in those of few edges.
    double GetEffort() const { return static_cast<double>(m_cells.size()) * m_cost; }
    void Add(const Circle& circle) { m_circles.push_back(circle); }

private:
    void AddCell(Point centre, double half, int level);
    void Visit(size_t index);
    void VisitChildren(size_t index);

    DepthField m_field;
    double m_cost; // of a cell
    std::vector<Cell> m_cells;
    std::vector<Circle> m_circles;
    size_t m_roots = 0;
    size_t m_mostCells = 0;
    std::priority_queue<std::pair<double, size_t>> m_open; // bound and cell
    Circle m_best;
};

PoleSearch::PoleSearch(const Polygon& polygon, double squares)
    : m_field(polygon)
    , m_cost(1 + static_cast<double>(m_field.GetEdgeCount()) / kEdgesOfASquare)
    , m_mostCells(
          std::clamp(kMostDistances / std::max<size_t>(1, m_field.GetEdgeCount()), kFewestCells, kMostCells))
{
    if (squares < static_cast<double>(m_mostCells) * m_cost)
        m_mostCells = static_cast<size_t>(squares / m_cost);
    const Box box = GetBox(polygon);
    const double size = std::min(box.GetWidth(), box.GetHeight());
    const int columns = std::clamp(static_cast<int>(std::ceil(box.GetWidth() / size)), 1, 64);
    const int rows = std::clamp(static_cast<int>(std::ceil(box.GetHeight() / size)), 1, 64);
    const double half = std::max(box.GetWidth() / columns, box.GetHeight() / rows) / 2;
    for (int i = 0; i < columns; ++i)
        for (int j = 0; j < rows; ++j)
            AddCell({box.min.x + box.GetWidth() * (i + 0.5) / columns,
                     box.min.y + box.GetHeight() * (j + 0.5) / rows},
                    half, 0);
    m_roots = m_cells.size();
}

void PoleSearch::AddCell(Point centre, double half, int level)
{
    m_cells.push_back({centre, half, m_field.GetDepth(centre), 0, 0, level});
}

void PoleSearch::Visit(size_t index)
{
    Cell& cell = m_cells[index];
    for (; cell.circles < m_circles.size(); ++cell.circles) {
        const Circle& circle = m_circles[cell.circles];
        cell.depth = std::min(cell.depth, Length(cell.centre - circle.centre) - circle.radius);
    }
    if (cell.depth > m_best.radius)
        m_best = {cell.centre, cell.depth};
    if (cell.GetBound() > m_best.radius && cell.level < kDeepestLevel)
        m_open.push({cell.GetBound(), index});
}

void PoleSearch::VisitChildren(size_t index)
{
    if (m_cells[index].children == 0) {
        const Cell cell = m_cells[index];
        m_cells[index].children = m_cells.size();
        const double quarter = cell.half / 2;
        for (const double x : {-quarter, quarter})
            for (const double y : {-quarter, quarter})
                AddCell(cell.centre + Point{x, y}, quarter, cell.level + 1);
    }
    for (size_t child = 0; child < 4; ++child)
        Visit(m_cells[index].children + child);
}

Circle PoleSearch::FindDeepest()
{
    m_open = {};
    m_best.radius = -std::numeric_limits<double>::infinity();
    for (size_t root = 0; root < m_roots; ++root)
        Visit(root);
    while (!m_open.empty()) {
        const auto [bound, index] = m_open.top();
        m_open.pop();
        const bool isEnough = m_best.radius > 0 && m_cells.size() > m_mostCells; // of slivers
        if (isEnough || bound <= m_best.radius + kAccuracy * std::max(m_best.radius, 0.0))
            break;
        VisitChildren(index);
    }
    return m_best;
}

/// Returns the middle of the longest part of a horizontal line that lies inside of a polygon.
std::optional<Point> FindMiddle(const Polygon& polygon, double y)
{
    std::vector<double> crossings;
    for (const Ring& ring : polygon) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point a = ring[i];
            const Point b = ring[(i + 1) % ring.size()];
            if ((a.y > y) != (b.y > y))
                crossings.push_back(a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y)));
        }
    }
    std::sort(crossings.begin(), crossings.end());
    double longest = 0;
    std::optional<Point> middle;
    for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
        if (crossings[i + 1] - crossings[i] > longest) {
            longest = crossings[i + 1] - crossings[i];
            middle = Point{(crossings[i] + crossings[i + 1]) / 2, y};
        }
    }
    return middle;
}

/// Returns the largest circle around the middles of a few lines; of no radius where none of them crosses the polygon.
Circle FindPoleOnLines(const Polygon& polygon)
{
    const DepthField field(polygon);
    const Box box = GetBox(polygon);
    Circle best{polygon[0][0], 0};
    for (const double height : kHeights) {
        const std::optional<Point> middle = FindMiddle(polygon, box.min.y + box.GetHeight() * height);
        const double depth = middle ? field.GetDepth(*middle) : 0;
        if (depth > best.radius)
            best = {*middle, depth};
    }
    return best;
}

std::vector<Circle> FindPoles(const Polygon& polygon, size_t limit, double& squares)
{
    const double area = GetArea(polygon);
    PoleSearch search(polygon, squares);
    std::vector<Circle> poles;
    double covered = 0;
    while (poles.size() < limit) {
        const Circle circle = search.FindDeepest();
        if (!poles.empty() && circle.radius <= 0.02 * poles.front().radius)
            break;
        poles.push_back(circle);
        search.Add(circle);
        covered += std::numbers::pi * circle.radius * circle.radius / area;
        if ((poles.size() >= 8 && covered >= 0.9) || (poles.size() >= 16 && covered >= 0.8))
            break;
    }
    squares -= search.GetEffort();
    return poles;
}

} // namespace

std::vector<Point> FindDeepPoints(const Polygon& polygon)
{
    std::vector<double> areas;
    std::vector<Polygon> pieces;
    for (const Ring& ring : polygon) {
        areas.push_back(GetSignedArea(ring));
        pieces.push_back(areas.back() > 0 ? Polygon{ring} : Polygon{});
    }
    for (size_t hole = 0; hole < polygon.size(); ++hole) {
        if (areas[hole] > 0)
            continue;
        const Ring& ring = polygon[hole];
        size_t around = polygon.size(); // the smallest one that holds it
        for (size_t i = 0; i < polygon.size(); ++i)
            if (areas[i] > -areas[hole] && (around == polygon.size() || areas[i] < areas[around])
                && (IsInside(ring[0], {polygon[i]}) || IsInside((ring[0] + ring[1]) * 0.5, {polygon[i]})))
                around = i;
        if (around < polygon.size())
            pieces[around].push_back(ring);
    }
    std::vector<Point> points;
    for (const Polygon& piece : pieces)
        if (!piece.empty())
            points.push_back(FindPoles(piece, 1).front().centre);
    return points;
}

std::vector<Circle> FindPoles(const Polygon& polygon, size_t limit)
{
    double squares = std::numeric_limits<double>::infinity();
    return FindPoles(polygon, limit, squares);
}

std::vector<Circle> FindPoles(const Polygon& polygon, double& squares)
{
    if (squares <= 0)
        return {FindPoleOnLines(polygon)};
    return FindPoles(polygon, kMostPoles, squares);
}

} // namespace ZORNestSolver
