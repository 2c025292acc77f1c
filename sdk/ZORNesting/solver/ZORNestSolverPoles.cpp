#include "ZORNestSolverPoles.h"

#include <queue>

#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr int DeepestLevel = 12;
constexpr double Accuracy = 0.01;

/// How far a point lies inside of a polygon and outside of the circles found so far.
class DepthField
{
public:
    explicit DepthField(const Polygon& polygon);
    double GetDepth(Point p) const;
    void Add(const Circle& circle) { m_circles.push_back(circle); }

private:
    std::vector<double> m_x, m_y, m_dx, m_dy, m_inverse, m_slope, m_endY;
    std::vector<Circle> m_circles;
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
}

double DepthField::GetDepth(Point p) const
{
    double nearest = std::numeric_limits<double>::infinity();
    int crossings = 0;
    const size_t count = m_x.size();
    for (size_t i = 0; i < count; ++i) {
        const double px = p.x - m_x[i];
        const double py = p.y - m_y[i];
        const double t = std::min(1.0, std::max(0.0, (px * m_dx[i] + py * m_dy[i]) * m_inverse[i]));
        const double ex = px - t * m_dx[i];
        const double ey = py - t * m_dy[i];
        const double squared = ex * ex + ey * ey;
        nearest = squared < nearest ? squared : nearest;
        const bool spans = (m_y[i] > p.y) != (m_endY[i] > p.y);
        crossings += static_cast<int>(spans && px < py * m_slope[i]);
    }
    double depth = std::sqrt(nearest) * (crossings % 2 == 1 ? 1 : -1);
    for (const Circle& circle : m_circles)
        depth = std::min(depth, Length(p - circle.centre) - circle.radius);
    return depth;
}

struct Cell
{
    Point centre;
    double half = 0;
    double depth = 0;
    double bound = 0; // no point of the cell lies deeper
    int level = 0;
    bool operator<(const Cell& other) const { return bound < other.bound; }
};

Cell MakeCell(const DepthField& field, Point centre, double half, int level)
{
    const double depth = field.GetDepth(centre);
    return {centre, half, depth, depth + half * std::numbers::sqrt2, level};
}

Circle FindDeepest(const DepthField& field, const Box& box)
{
    const double size = std::min(box.GetWidth(), box.GetHeight());
    std::priority_queue<Cell> open;
    Circle best;
    best.radius = -std::numeric_limits<double>::infinity();
    const auto visit = [&](const Cell& cell) {
        if (cell.depth > best.radius)
            best = {cell.centre, cell.depth};
        if (cell.bound > best.radius && cell.level < DeepestLevel)
            open.push(cell);
    };
    const int columns = std::clamp(static_cast<int>(std::ceil(box.GetWidth() / size)), 1, 64);
    const int rows = std::clamp(static_cast<int>(std::ceil(box.GetHeight() / size)), 1, 64);
    const double half = std::max(box.GetWidth() / columns, box.GetHeight() / rows) / 2;
    for (int i = 0; i < columns; ++i)
        for (int j = 0; j < rows; ++j)
            visit(MakeCell(field,
                           {box.min.x + box.GetWidth() * (i + 0.5) / columns,
                            box.min.y + box.GetHeight() * (j + 0.5) / rows},
                           half, 0));
    while (!open.empty()) {
        const Cell cell = open.top();
        open.pop();
        if (cell.bound <= best.radius + Accuracy * std::max(best.radius, 0.0))
            break;
        const double quarter = cell.half / 2;
        for (const double x : {-quarter, quarter})
            for (const double y : {-quarter, quarter})
                visit(MakeCell(field, cell.centre + Point{x, y}, quarter, cell.level + 1));
    }
    return best;
}

} // namespace

std::vector<Circle> FindPoles(const Polygon& polygon, size_t limit)
{
    const Box box = GetBox(polygon);
    const double area = GetArea(polygon);
    DepthField field(polygon);
    std::vector<Circle> poles;
    double covered = 0;
    while (poles.size() < limit) {
        const Circle circle = FindDeepest(field, box);
        if (!poles.empty() && circle.radius <= 0.02 * poles.front().radius)
            break;
        poles.push_back(circle);
        field.Add(circle);
        covered += std::numbers::pi * circle.radius * circle.radius / area;
        if ((poles.size() >= 8 && covered >= 0.9) || (poles.size() >= 16 && covered >= 0.8))
            break;
    }
    return poles;
}

} // namespace ZORNestSolver
