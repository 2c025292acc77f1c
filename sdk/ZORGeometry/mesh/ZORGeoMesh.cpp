#include "ZORGeoMesh_p.h"

#include <algorithm>
#include <utility>

namespace {

// Sides of triangles, sorted by the lower vertex of their edge, and what is found out about them.
class SideTable
{
public:
    SideTable(qsizetype vertexCount, const ZORGeoMesh::Corners* triangles, qsizetype triangleCount)
        : m_triangles(triangles)
        , m_triangleCount(triangleCount)
    {
        Sort(size_t(vertexCount));
    }

    // Links the two triangles of every edge that has exactly two.
    void Link(std::vector<quint32>& neighbors)
    {
        neighbors.assign(size_t(3 * m_triangleCount), 0);
        LinkAll(neighbors);
        if (m_duplicate.empty())
            return;
        // Rare: some triangle repeats an earlier one. Once more without the repetitions.
        std::fill(neighbors.begin(), neighbors.end(), 0);
        RemoveDuplicates();
        LinkAll(neighbors);
    }

private:
    struct Side
    {
        int upper;        // higher vertex of the edge
        quint32 position; // 4 * triangle + side
    };

    int ThirdCorner(quint32 position) const { return m_triangles[position / 4][(position % 4 + 2) % 3]; }

    void Sort(size_t vertexCount);
    void LinkAll(std::vector<quint32>& neighbors);
    void LinkGroup(const Side* begin, const Side* end, std::vector<quint32>& neighbors);
    void FindDuplicates(const Side* begin, const Side* end);
    void RemoveDuplicates();

    const ZORGeoMesh::Corners* m_triangles;
    qsizetype m_triangleCount;
    std::vector<quint32> m_first; // by lower vertex: its first side; one more than vertices
    std::vector<Side> m_sides;
    std::vector<bool> m_duplicate; // empty while none was found
};

void SideTable::Sort(size_t vertexCount)
{
    const auto forEachSide = [this](auto&& visit) {
        for (quint32 t = 0; t < quint32(m_triangleCount); ++t) {
            const auto [a, b, c] = m_triangles[t];
            if (a == b || b == c || c == a)
                continue;
            visit(std::min(a, b), std::max(a, b), 4 * t);
            visit(std::min(b, c), std::max(b, c), 4 * t + 1);
            visit(std::min(c, a), std::max(c, a), 4 * t + 2);
        }
    };
    // Counts are kept one place up, so that after the filling pass every entry is the start of its group.
    m_first.assign(vertexCount + 2, 0);
    forEachSide([this](int lower, int, quint32) { ++m_first[size_t(lower) + 2]; });
    for (size_t v = 2; v < m_first.size(); ++v)
        m_first[v] += m_first[v - 1];
    m_sides.resize(m_first.back());
    forEachSide([this](int lower, int upper, quint32 position) {
        m_sides[m_first[size_t(lower) + 1]++] = {upper, position};
    });
    m_first.pop_back();
}

void SideTable::LinkAll(std::vector<quint32>& neighbors)
{
    for (size_t v = 0; v + 1 < m_first.size(); ++v) {
        Side* const begin = m_sides.data() + m_first[v];
        Side* const end = m_sides.data() + m_first[v + 1];
        std::stable_sort(begin, end, [](const Side& a, const Side& b) { return a.upper < b.upper; });
        for (const Side* group = begin; group != end;) {
            const Side* next = group + 1;
            while (next != end && next->upper == group->upper)
                ++next;
            if (next - group > 1)
                LinkGroup(group, next, neighbors);
            group = next;
        }
    }
}

void SideTable::LinkGroup(const Side* begin, const Side* end, std::vector<quint32>& neighbors)
{
    FindDuplicates(begin, end);
    if (end - begin != 2)
        return;
    const quint32 a = begin[0].position;
    const quint32 b = begin[1].position;
    neighbors[3 * (a / 4) + a % 4] = b + 4;
    neighbors[3 * (b / 4) + b % 4] = a + 4;
}

// Triangles with the same corners meet at each of their edges, so any edge shows them.
void SideTable::FindDuplicates(const Side* begin, const Side* end)
{
    std::vector<std::pair<int, quint32>> many;
    const auto mark = [this](quint32 position) {
        m_duplicate.resize(size_t(m_triangleCount));
        m_duplicate[position / 4] = true;
    };
    if (end - begin == 2) {
        if (ThirdCorner(begin[0].position) == ThirdCorner(begin[1].position))
            mark(begin[1].position);
        return;
    }
    for (const Side* side = begin; side != end; ++side)
        many.emplace_back(ThirdCorner(side->position), side->position);
    std::sort(many.begin(), many.end());
    for (size_t i = 1; i < many.size(); ++i) {
        if (many[i].first == many[i - 1].first)
            mark(many[i].second);
    }
}

void SideTable::RemoveDuplicates()
{
    quint32 kept = 0;
    for (size_t v = 0; v + 1 < m_first.size(); ++v) {
        const quint32 begin = std::exchange(m_first[v], kept);
        for (quint32 i = begin; i < m_first[v + 1]; ++i) {
            if (!m_duplicate[m_sides[i].position / 4])
                m_sides[kept++] = m_sides[i];
        }
    }
    m_first.back() = kept;
}

} // namespace

ZORGeoMesh::ZORGeoMesh(const QList<ZORMathPoint>& meshVertices, const QList<Corners>& meshTriangles)
    : vertices(meshVertices)
    , triangles(meshTriangles)
{
    SideTable(vertices.size(), triangles.constData(), triangles.size()).Link(m_neighbors);
}

const ZORMathBoundingBox& ZORGeoMesh::GetBox() const
{
    std::call_once(m_boxMeasured, [this] {
        for (const Corners& corners : triangles) {
            for (const int corner : corners)
                m_box.Add(vertices[corner]);
        }
    });
    return m_box;
}
