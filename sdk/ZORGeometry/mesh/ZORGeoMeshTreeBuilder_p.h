// Construction of the bounding volume hierarchy.

#pragma once

#include "ZORGeoMeshTree_p.h"

#include <span>
#include <vector>

/// Splits boxes top-down where the surface-area heuristic, evaluated at 16 places an axis, is least.
///
/// I. Wald: On fast Construction of SAH-based Bounding Volume Hierarchies, Symposium on Interactive Ray
/// Tracing 2007.
class ZORGeoMeshTreeBuilder
{
public:
    using Vector = float __attribute__((vector_size(16))); // x, y, z and one to spare

    struct Box
    {
        Vector lower;
        Vector upper;
    };
    /// A triangle's box with its number, exact in two floats, in the lanes to spare.
    struct Primitive
    {
        Primitive() = default;
        Primitive(Vector lower, Vector upper, int triangle)
            : box{lower, upper}
        {
            box.lower[3] = float(triangle >> 15);
            box.upper[3] = float(triangle & 0x7fff);
        }
        int GetTriangle() const { return int(box.lower[3]) << 15 | int(box.upper[3]); }

        Box box = {};
    };

    /// \param primitives  put into the order of the leaves
    explicit ZORGeoMeshTreeBuilder(std::vector<Primitive>& primitives);

    /// The nodes, the root first; none for a mesh that fits into one leaf.
    std::vector<ZORGeoMeshTree::Node> Build();

    static constexpr quint32 kLeafSize = 4;

private:
    using Nodes = std::vector<ZORGeoMeshTree::Node>;
    struct Range
    {
        quint32 begin = 0;
        quint32 end = 0;
        Box box;     // around the primitives
        Box centers; // around the doubled centres of their boxes
    };
    struct Split
    {
        int axis = -1; // -1: all centres coincide
        int bin = 0;   // the first on the right
    };
    struct Task
    {
        Range range;
        int depth = 0;
        quint32 node = 0; // whose child the subtree is
        int child = 0;
    };

    Range MakeRange(quint32 begin, quint32 end) const;
    Split FindSplit(const Range& range) const;
    quint32 Partition(const Range& range, int depth);
    quint32 BuildNode(const Range& range, int depth, quint32 taskSize, Nodes& nodes,
                      std::vector<Task>& tasks);
    void RunTasks(const std::vector<Task>& tasks, Nodes& nodes);

    std::vector<Primitive>& m_primitives;
};
