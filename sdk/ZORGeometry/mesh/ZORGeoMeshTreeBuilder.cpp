#include "ZORGeoMeshTreeBuilder_p.h"

#include <algorithm>
#include <future>
#include <limits>

namespace {

using Vector = ZORGeoMeshTreeBuilder::Vector;
using Box = ZORGeoMeshTreeBuilder::Box;

constexpr int kBinCount = 16;
constexpr int kDepthOfMedianSplits = 64; // deeper down halves, so that MaximumDepth holds for any mesh
constexpr quint32 kSmallestTask = 20000;

Vector Minimum(Vector a, Vector b)
{
    return a < b ? a : b;
}

Vector Maximum(Vector a, Vector b)
{
    return a > b ? a : b;
}

Box EmptyBox()
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    return {Vector{} + kInfinity, Vector{} - kInfinity};
}

void Grow(Box& box, const Box& other)
{
    box.lower = Minimum(box.lower, other.lower);
    box.upper = Maximum(box.upper, other.upper);
}

float HalfArea(const Box& box)
{
    const Vector size = box.upper - box.lower;
    return size[0] * size[1] + size[1] * size[2] + size[2] * size[0];
}

// Where the doubled centres of boxes lie among the bins.
struct Binning
{
    explicit Binning(const Box& centers)
        : origin(centers.lower)
    {
        const Vector size = centers.upper - centers.lower;
        for (int axis = 0; axis < 3; ++axis)
            scale[axis] = size[axis] > 1e-30f ? 0.999f * kBinCount / size[axis] : 0;
    }
    auto operator()(const Box& box) const
    {
        const Vector position = (box.lower + box.upper - origin) * scale;
        return __builtin_convertvector(position, int __attribute__((vector_size(16))));
    }

    Vector origin;
    Vector scale = {};
};

} // namespace

ZORGeoMeshTreeBuilder::ZORGeoMeshTreeBuilder(std::vector<Primitive>& primitives)
    : m_primitives(primitives)
{
}

std::vector<ZORGeoMeshTree::Node> ZORGeoMeshTreeBuilder::Build()
{
    Nodes nodes;
    const quint32 count = quint32(m_primitives.size());
    if (count <= kLeafSize)
        return nodes;
    std::vector<Task> tasks;
    BuildNode(MakeRange(0, count), 0, std::max(count / 16, kSmallestTask), nodes, tasks);
    RunTasks(tasks, nodes);
    return nodes;
}

ZORGeoMeshTreeBuilder::Range ZORGeoMeshTreeBuilder::MakeRange(quint32 begin, quint32 end) const
{
    Range range = {begin, end, EmptyBox(), EmptyBox()};
    for (quint32 i = begin; i < end; ++i) {
        const Box& box = m_primitives[i].box;
        const Vector center = box.lower + box.upper;
        Grow(range.box, box);
        Grow(range.centers, {center, center});
    }
    return range;
}

ZORGeoMeshTreeBuilder::Split ZORGeoMeshTreeBuilder::FindSplit(const Range& range) const
{
    struct Bin
    {
        Box box = EmptyBox();
        quint32 count = 0;
    };
    Bin bins[3][kBinCount];
    const Binning binning(range.centers);
    for (quint32 i = range.begin; i < range.end; ++i) {
        const Box& box = m_primitives[i].box;
        const auto place = binning(box);
        for (int axis = 0; axis < 3; ++axis) {
            Bin& bin = bins[axis][place[axis]];
            Grow(bin.box, box);
            ++bin.count;
        }
    }
    Split best;
    float leastCost = std::numeric_limits<float>::infinity();
    for (int axis = 0; axis < 3; ++axis) {
        if (binning.scale[axis] == 0)
            continue;
        float rightCosts[kBinCount];
        Bin side;
        for (int bin = kBinCount - 1; bin > 0; --bin) {
            Grow(side.box, bins[axis][bin].box);
            side.count += bins[axis][bin].count;
            rightCosts[bin] = side.count > 0 ? HalfArea(side.box) * float(side.count) : -1;
        }
        side = {};
        for (int bin = 1; bin < kBinCount; ++bin) {
            Grow(side.box, bins[axis][bin - 1].box);
            side.count += bins[axis][bin - 1].count;
            if (side.count == 0 || rightCosts[bin] < 0)
                continue;
            const float cost = HalfArea(side.box) * float(side.count) + rightCosts[bin];
            if (best.axis < 0 || cost < leastCost) {
                leastCost = cost;
                best = {axis, bin};
            }
        }
    }
    return best;
}

// Orders the primitives of the range so that those of the left child come first.
quint32 ZORGeoMeshTreeBuilder::Partition(const Range& range, int depth)
{
    const auto begin = m_primitives.begin() + range.begin;
    const auto end = m_primitives.begin() + range.end;
    const Split split = depth < kDepthOfMedianSplits ? FindSplit(range) : Split();
    if (split.axis < 0)
        return range.begin + (range.end - range.begin) / 2;
    const Binning binning(range.centers);
    const auto middle = std::partition(begin, end, [&](const Primitive& primitive) {
        return binning(primitive.box)[split.axis] < split.bin;
    });
    return quint32(middle - m_primitives.begin());
}

quint32 ZORGeoMeshTreeBuilder::BuildNode(const Range& range, int depth, quint32 taskSize, Nodes& nodes,
                                         std::vector<Task>& tasks)
{
    const quint32 index = quint32(nodes.size());
    nodes.emplace_back();
    const quint32 middle = Partition(range, depth);
    const Range halves[2] = {MakeRange(range.begin, middle), MakeRange(middle, range.end)};
    for (int i = 0; i < 2; ++i) {
        const Range& half = halves[i];
        for (int axis = 0; axis < 3; ++axis) {
            nodes[index].lower[axis][i] = half.box.lower[axis];
            nodes[index].upper[axis][i] = half.box.upper[axis];
        }
        const quint32 count = half.end - half.begin;
        if (count <= kLeafSize) {
            nodes[index].child[i] = {half.begin, count};
        } else if (count <= taskSize) {
            tasks.push_back({half, depth + 1, index, i});
        } else {
            const quint32 child = BuildNode(half, depth + 1, taskSize, nodes, tasks);
            nodes[index].child[i] = {child, 0};
        }
    }
    return index;
}

// Builds the subtrees side by side and appends them in their order.
void ZORGeoMeshTreeBuilder::RunTasks(const std::vector<Task>& tasks, Nodes& nodes)
{
    const auto policy = tasks.size() > 1 ? std::launch::async | std::launch::deferred : std::launch::deferred;
    std::vector<std::future<Nodes>> subtrees;
    subtrees.reserve(tasks.size());
    for (const Task& task : tasks) {
        subtrees.push_back(std::async(policy, [this, &task] {
            Nodes subtree;
            std::vector<Task> none;
            subtree.reserve((task.range.end - task.range.begin) / 2);
            BuildNode(task.range, task.depth, 0, subtree, none);
            return subtree;
        }));
    }
    for (size_t i = 0; i < tasks.size(); ++i) {
        const Nodes subtree = subtrees[i].get();
        const quint32 offset = quint32(nodes.size());
        nodes[tasks[i].node].child[tasks[i].child] = {offset, 0};
        for (ZORGeoMeshTree::Node node : subtree) {
            for (ZORGeoMeshTree::Child& child : node.child)
                child.first += child.count == 0 ? offset : 0;
            nodes.push_back(node);
        }
    }
}
