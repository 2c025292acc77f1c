#include "ZORNestSolverShape.h"

#include "solver/geometry/ZORNestSolverPose.h"

namespace ZORNestSolver {

namespace {

constexpr size_t kPolePadding = 8;
constexpr size_t kEdgePadding = 4;

size_t Padded(size_t count, size_t to)
{
    return (count + to - 1) / to * to;
}

void SetEdges(Shape& shape, const Polygon& polygon)
{
    for (const Ring& ring : polygon) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point b = ring[(i + 1) % ring.size()];
            shape.ax.push_back(ring[i].x);
            shape.ay.push_back(ring[i].y);
            shape.bx.push_back(b.x);
            shape.by.push_back(b.y);
        }
    }
    shape.edgeCount = shape.ax.size();
    const size_t padded = Padded(shape.edgeCount, kEdgePadding);
    for (auto* array : {&shape.ax, &shape.ay, &shape.bx, &shape.by})
        array->resize(padded, std::numeric_limits<double>::quiet_NaN());
}

void SetPoles(Shape& shape, const std::vector<Circle>& poles)
{
    for (const Circle& pole : poles) {
        shape.poleX.push_back(static_cast<float>(pole.centre.x));
        shape.poleY.push_back(static_cast<float>(pole.centre.y));
        shape.poleR.push_back(static_cast<float>(pole.radius));
    }
    shape.poleCount = poles.size();
    const size_t padded = Padded(poles.size(), kPolePadding);
    for (auto* array : {&shape.poleX, &shape.poleY, &shape.poleR})
        array->resize(padded, 0);
}

} // namespace

Shape MakeShape(const Polygon& polygon, const std::vector<Circle>& poles)
{
    Shape shape;
    SetEdges(shape, polygon);
    SetPoles(shape, poles);
    shape.box = GetBox(polygon);
    shape.extent = shape.box;
    if (HasPieces(polygon))
        shape.deepPoints = FindDeepPoints(polygon);
    const Ring hull = GetConvexHull(polygon);
    shape.diameter = GetDiameter(hull);
    shape.weight = std::sqrt(GetSignedArea(hull));
    return shape;
}

void TurnShape(const Shape& base, bool mirrored, double angle, Shape& turned)
{
    const Transform transform({mirrored, angle, {}});
    turned = base;
    turned.box = {};
    for (size_t i = 0; i < base.edgeCount; ++i) {
        const Point a = transform.Apply(Point{base.ax[i], base.ay[i]});
        const Point b = transform.Apply(Point{base.bx[i], base.by[i]});
        turned.ax[i] = a.x;
        turned.ay[i] = a.y;
        turned.bx[i] = b.x;
        turned.by[i] = b.y;
        turned.box.Add(a);
    }
    turned.extent = turned.box;
    for (size_t i = 0; i < base.deepPoints.size(); ++i)
        turned.deepPoints[i] = transform.Apply(base.deepPoints[i]);
    for (size_t i = 0; i < base.bare.size(); ++i)
        TurnShape(base.bare[i], mirrored, angle, turned.bare[i]);
    for (size_t i = 0; i < base.poleCount; ++i) {
        const Point centre = transform.Apply(Point{base.poleX[i], base.poleY[i]});
        turned.poleX[i] = static_cast<float>(centre.x);
        turned.poleY[i] = static_cast<float>(centre.y);
    }
}

} // namespace ZORNestSolver
