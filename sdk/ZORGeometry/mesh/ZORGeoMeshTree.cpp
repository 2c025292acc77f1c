#include "ZORGeoMeshTreeBuilder_p.h"
#include "ZORGeoMeshTree_p.h"

#include <ZORMathematics/ZORMathBoundingBox.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Node = ZORGeoMeshTree::Node;

// Bounds are computed with a relative error of a few 1e-16: what lies within this factor is still visited.
constexpr double kSlack = 1 - 1e-12;

// One value for each child of a node.
using Pair = double __attribute__((vector_size(16)));

Pair Load(const float (&values)[2])
{
    return Pair{double(values[0]), double(values[1])};
}

float RoundDown(double value)
{
    const float rounded = float(value);
    return double(rounded) <= value ? rounded : std::nextafter(rounded, -INFINITY);
}

float RoundUp(double value)
{
    const float rounded = float(value);
    return double(rounded) >= value ? rounded : std::nextafter(rounded, INFINITY);
}

// How far a coordinate lies outside the range of three others.
double Outside(double value, double a, double b, double c)
{
    const double below = std::min(std::min(a, b), c) - value;
    const double above = value - std::max(std::max(a, b), c);
    return std::max(std::max(below, above), 0.0);
}

// Squared distances to boxes and triangles.
struct NearestVisitor
{
    const ZORGeoMesh& mesh;
    const ZORMathPoint& point;
    double framed[3]; // the point in the frame of the tree
    double squaredScale;
    double limit = std::numeric_limits<double>::infinity(); // squared, in the frame
    ZORGeoMeshTree::Nearest best = {};

    double GetLimit() const { return limit; }

    void Bound(const Node& node, double (&bounds)[2]) const
    {
        Pair squared = {0, 0};
        for (int axis = 0; axis < 3; ++axis) {
            const Pair below = Load(node.lower[axis]) - framed[axis];
            const Pair above = framed[axis] - Load(node.upper[axis]);
            const Pair outside = below > above ? below : above;
            const Pair positive = outside > 0 ? outside : Pair{0, 0};
            squared += positive * positive;
        }
        squared *= kSlack;
        bounds[0] = squared[0];
        bounds[1] = squared[1];
    }

    void Visit(const ZORGeoMeshTree::LeafTriangle& leaf)
    {
        const ZORMathPoint& a = mesh.vertices[leaf.corners[0]];
        const ZORMathPoint& b = mesh.vertices[leaf.corners[1]];
        const ZORMathPoint& c = mesh.vertices[leaf.corners[2]];
        const double x = Outside(point.GetX(), a.GetX(), b.GetX(), c.GetX());
        const double y = Outside(point.GetY(), a.GetY(), b.GetY(), c.GetY());
        const double z = Outside(point.GetZ(), a.GetZ(), b.GetZ(), c.GetZ());
        if ((x * x + y * y + z * z) * kSlack > best.place.squaredDistance && best.triangle >= 0)
            return;
        const ZORGeoTrianglePlace place = ZorGeoClosestOnTriangle(point, a, b, c);
        const double nearest = best.place.squaredDistance;
        if (best.triangle >= 0
            && (place.squaredDistance > nearest
                || (place.squaredDistance == nearest && leaf.triangle > best.triangle)))
            return;
        best = {leaf.triangle, place};
        limit = place.squaredDistance * squaredScale;
    }
};

// Parameters along a ray.
struct FirstVisitor
{
    const ZORGeoMesh& mesh;
    const ZORGeoRay& ray;
    double origin[3]; // in the frame of the tree
    double inverse[3];
    double limit = std::numeric_limits<double>::infinity();
    ZORGeoMeshTree::FirstHit best = {};

    double GetLimit() const { return limit; }

    void Bound(const Node& node, double (&bounds)[2]) const
    {
        for (int i = 0; i < 2; ++i) {
            double from = 0;
            double to = limit;
            for (int axis = 0; axis < 3; ++axis) {
                const double lower = double(node.lower[axis][i]) - origin[axis];
                const double upper = double(node.upper[axis][i]) - origin[axis];
                if (std::isinf(inverse[axis])) {
                    if (lower > 0 || upper < 0)
                        to = -1;
                    continue;
                }
                const double first = std::min(lower * inverse[axis], upper * inverse[axis]);
                const double last = std::max(lower * inverse[axis], upper * inverse[axis]);
                from = std::max(from, first * kSlack);
                to = std::min(to, last / kSlack);
            }
            bounds[i] = from <= to ? from : std::numeric_limits<double>::quiet_NaN(); // below no limit
        }
    }

    void Visit(const ZORGeoMeshTree::LeafTriangle& leaf)
    {
        const auto [a, b, c] = leaf.corners;
        ZORGeoRay::Hit hit;
        if (!ray.Intersect(mesh.vertices[a], mesh.vertices[b], mesh.vertices[c], hit))
            return;
        const double first = best.hit.parameter;
        if (best.triangle >= 0
            && (hit.parameter > first || (hit.parameter == first && leaf.triangle > best.triangle)))
            return;
        best = {leaf.triangle, hit};
        limit = hit.parameter;
    }
};

} // namespace

ZORGeoMeshTree::ZORGeoMeshTree(const ZORGeoMesh& mesh)
    : m_mesh(mesh)
{
    ZORMathBoundingBox box;
    for (const ZORGeoMesh::Corners& corners : mesh.triangles) {
        for (const int corner : corners)
            box.Add(mesh.vertices[corner]);
    }
    const ZORMathPoint center = box.GetCenter();
    const ZORMathVector size = box.GetUpperPoint() - box.GetLowerPoint();
    const double largest = std::max({size.GetX(), size.GetY(), size.GetZ()});
    m_center[0] = center.GetX();
    m_center[1] = center.GetY();
    m_center[2] = center.GetZ();
    m_scale = largest > 0 ? std::ldexp(1.0, std::clamp(-std::ilogb(largest), -200, 200)) : 1;

    std::vector<ZORGeoMeshTreeBuilder::Primitive> primitives(size_t(mesh.GetNumTriangles()));
    for (int triangle = 0; triangle < mesh.GetNumTriangles(); ++triangle) {
        const auto [a, b, c] = mesh.triangles[triangle];
        const ZORMathPoint corners[3] = {mesh.vertices[a], mesh.vertices[b], mesh.vertices[c]};
        const auto [lowerX, upperX] = std::minmax({corners[0].GetX(), corners[1].GetX(), corners[2].GetX()});
        const auto [lowerY, upperY] = std::minmax({corners[0].GetY(), corners[1].GetY(), corners[2].GetY()});
        const auto [lowerZ, upperZ] = std::minmax({corners[0].GetZ(), corners[1].GetZ(), corners[2].GetZ()});
        const auto framed = [this](double value, int axis) { return (value - m_center[axis]) * m_scale; };
        using Vector = ZORGeoMeshTreeBuilder::Vector;
        const Vector lower = {RoundDown(framed(lowerX, 0)), RoundDown(framed(lowerY, 1)),
                              RoundDown(framed(lowerZ, 2)), 0};
        const Vector upper = {RoundUp(framed(upperX, 0)), RoundUp(framed(upperY, 1)),
                              RoundUp(framed(upperZ, 2)), 0};
        primitives[size_t(triangle)] = ZORGeoMeshTreeBuilder::Primitive(lower, upper, triangle);
    }
    m_nodes = ZORGeoMeshTreeBuilder(primitives).Build();
    m_triangles.reserve(primitives.size());
    for (const ZORGeoMeshTreeBuilder::Primitive& primitive : primitives)
        m_triangles.push_back({mesh.triangles[primitive.GetTriangle()], primitive.GetTriangle()});
}

// Depth first, the child with the smaller bound before the other.
template<class Visitor>
void ZORGeoMeshTree::Traverse(Visitor& visitor) const
{
    struct Waiting
    {
        Child child;
        double bound;
    };
    std::array<Waiting, kMaximumDepth + 1> stack;
    size_t waiting = 0;
    Child child = m_nodes.empty() ? Child{0, quint32(m_triangles.size())} : Child{0, 0};
    if (m_triangles.empty())
        return;
    for (;;) {
        if (child.count > 0) {
            for (quint32 i = child.first; i < child.first + child.count; ++i)
                visitor.Visit(m_triangles[i]);
        } else {
            const Node& node = m_nodes[child.first];
            double bounds[2];
            visitor.Bound(node, bounds);
            const int near = bounds[1] < bounds[0] ? 1 : 0;
            if (bounds[1 - near] <= visitor.GetLimit())
                stack[waiting++] = {node.child[1 - near], bounds[1 - near]};
            if (bounds[near] <= visitor.GetLimit()) {
                child = node.child[near];
                continue;
            }
        }
        do {
            if (waiting == 0)
                return;
        } while (stack[--waiting].bound > visitor.GetLimit());
        child = stack[waiting].child;
    }
}

ZORGeoMeshTree::Nearest ZORGeoMeshTree::FindNearest(const ZORMathPoint& point, int guess) const
{
    NearestVisitor visitor = {m_mesh,
                              point,
                              {(point.GetX() - m_center[0]) * m_scale, (point.GetY() - m_center[1]) * m_scale,
                               (point.GetZ() - m_center[2]) * m_scale},
                              m_scale * m_scale};
    if (guess >= 0)
        visitor.Visit({m_mesh.triangles[guess], guess});
    Traverse(visitor);
    return visitor.best;
}

ZORGeoMeshTree::FirstHit ZORGeoMeshTree::FindFirst(const ZORGeoRay& ray) const
{
    FirstVisitor visitor = {m_mesh, ray, {}, {}};
    for (int axis = 0; axis < 3; ++axis) {
        visitor.origin[axis] = (ray.GetOrigin()[axis] - m_center[axis]) * m_scale;
        visitor.inverse[axis] = 1 / (ray.GetDirection()[axis] * m_scale);
    }
    Traverse(visitor);
    return visitor.best;
}
