#include "ZORNestFill_p.h"

#include <algorithm>
#include <vector>

namespace {

/// From its lower to its upper end. As the left side of an area it knows the right side and where the area
/// began.
struct Edge
{
    double XAt(double y) const
    {
        if (y <= lowerY)
            return lowerX;
        if (y >= upperY)
            return upperX;
        return lowerX + (y - lowerY) / (upperY - lowerY) * (upperX - lowerX);
    }

    double lowerX;
    double lowerY;
    double upperX;
    double upperY;
    double place = 0; // where it crosses the present slab
    const Edge* right = nullptr;
    double areaBegin = 0;
    size_t slab = 0; // the last one in which it was a left side, from 1
};

std::vector<Edge> EdgesOf(const QList<ZORMathSetOfPoints>& outlines)
{
    std::vector<Edge> edges;
    for (const ZORMathSetOfPoints& outline : outlines) {
        for (qsizetype i = 0; i < outline.size(); ++i) {
            const ZORMathPoint* a = &outline[i];
            const ZORMathPoint* b = &outline[i + 1 < outline.size() ? i + 1 : 0];
            if (a->GetY() > b->GetY())
                std::swap(a, b);
            if (a->GetY() < b->GetY())
                edges.push_back({a->GetX(), a->GetY(), b->GetX(), b->GetY()});
        }
    }
    std::stable_sort(edges.begin(), edges.end(),
                     [](const Edge& a, const Edge& b) { return a.lowerY < b.lowerY; });
    return edges;
}

std::vector<double> HeightsOf(const std::vector<Edge>& edges)
{
    std::vector<double> heights;
    heights.reserve(2 * edges.size());
    for (const Edge& edge : edges) {
        heights.push_back(edge.lowerY);
        heights.push_back(edge.upperY);
    }
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    return heights;
}

// Crossings of outlines, times the edges beside each, beyond which they are no longer looked at.
constexpr size_t kMostWork = 40'000'000;

double CrossingHeight(const Edge& a, const Edge& b, double low, double high)
{
    const double below = b.XAt(low) - a.XAt(low);
    const double above = b.XAt(high) - a.XAt(high);
    return low + below / (below - above) * (high - low);
}

/// The sweep from the lowest height to the highest, slab by slab. Edges cross within no slab.
class Sweep
{
public:
    explicit Sweep(const QList<ZORMathSetOfPoints>& outlines)
        : m_edges(EdgesOf(outlines))
        , m_heights(HeightsOf(m_edges))
    {
    }
    ZORMathSetOfPoints Run();

private:
    void FindEdges(double low);
    void SortEdges(double height);
    void FindCrossings(double low, double high);
    void FollowAreas(double low);
    void EndArea(const Edge& left, double high);

    std::vector<Edge> m_edges;
    std::vector<double> m_heights;
    size_t m_next = 0;             // first edge that has not begun yet
    std::vector<Edge*> m_crossing; // the edges of the slab from left to right
    std::vector<double> m_cuts;    // heights within the slab where some of them cross
    size_t m_slab = 0;             // its number, from 1
    size_t m_work = 0;             // that crossings have taken so far
    std::vector<Edge*> m_lefts;    // left sides of the areas of the slab before
    std::vector<Edge*> m_newLefts;
    ZORMathSetOfPoints m_triangles;
};

void Sweep::FindEdges(double low)
{
    std::erase_if(m_crossing, [low](const Edge* edge) { return edge->upperY <= low; });
    for (; m_next < m_edges.size() && m_edges[m_next].lowerY <= low; ++m_next)
        m_crossing.push_back(&m_edges[m_next]);
}

// The order hardly changes from slab to slab: sorting by insertion takes little more than a pass.
void Sweep::SortEdges(double height)
{
    for (Edge* edge : m_crossing)
        edge->place = edge->XAt(height);
    size_t moves = 8 * m_crossing.size();
    for (size_t i = 0; i < m_crossing.size(); ++i) {
        Edge* const edge = m_crossing[i];
        size_t place = i;
        for (; place > 0 && m_crossing[place - 1]->place > edge->place; --place)
            m_crossing[place] = m_crossing[place - 1];
        m_crossing[place] = edge;
        if (i - place > moves) {
            std::stable_sort(m_crossing.begin(), m_crossing.end(),
                             [](const Edge* a, const Edge* b) { return a->place < b->place; });
            return;
        }
        moves -= i - place;
    }
}

// Sorting by insertion from the order at the lower side to that at the upper one swaps each pair that crosses.
// Leaves the edges in their order within the slab where none do.
void Sweep::FindCrossings(double low, double high)
{
    m_cuts.clear();
    SortEdges(low);
    for (Edge* edge : m_crossing)
        edge->place = edge->XAt(high);
    for (size_t i = 0; i < m_crossing.size() && m_work < kMostWork; ++i) {
        Edge* const edge = m_crossing[i];
        size_t place = i;
        for (; place > 0 && m_crossing[place - 1]->place > edge->place; --place) {
            const double cut = CrossingHeight(*m_crossing[place - 1], *edge, low, high);
            if (cut > low && cut < high)
                m_cuts.push_back(cut);
            m_crossing[place] = m_crossing[place - 1];
        }
        m_crossing[place] = edge;
        m_work += (i - place) * m_crossing.size();
    }
    if (m_work >= kMostWork) {
        m_cuts.clear();
        SortEdges(low + (high - low) / 2);
    }
    std::sort(m_cuts.begin(), m_cuts.end());
    m_cuts.erase(std::unique(m_cuts.begin(), m_cuts.end()), m_cuts.end());
}

void Sweep::EndArea(const Edge& left, double high)
{
    const double low = left.areaBegin;
    const ZORMathPoint lowerLeft(left.XAt(low), low, 0);
    const ZORMathPoint lowerRight(left.right->XAt(low), low, 0);
    const ZORMathPoint upperLeft(left.XAt(high), high, 0);
    const ZORMathPoint upperRight(left.right->XAt(high), high, 0);
    if (lowerLeft.GetX() < lowerRight.GetX())
        m_triangles << lowerLeft << lowerRight << upperRight;
    if (upperLeft.GetX() < upperRight.GetX())
        m_triangles << lowerLeft << upperRight << upperLeft;
}

// An area goes on while its sides stay the same.
void Sweep::FollowAreas(double low)
{
    ++m_slab;
    m_newLefts.clear();
    for (size_t pair = 0; pair + 1 < m_crossing.size(); pair += 2) {
        Edge& left = *m_crossing[pair];
        const Edge* const right = m_crossing[pair + 1];
        const bool isOpen = left.right && left.slab + 1 == m_slab;
        if (!isOpen || left.right != right) {
            if (isOpen)
                EndArea(left, low);
            left.right = right;
            left.areaBegin = low;
        }
        left.slab = m_slab;
        m_newLefts.push_back(&left);
    }
    for (const Edge* left : m_lefts) {
        if (left->slab != m_slab)
            EndArea(*left, low);
    }
    m_lefts.swap(m_newLefts);
}

ZORMathSetOfPoints Sweep::Run()
{
    for (size_t i = 1; i < m_heights.size(); ++i) {
        double low = m_heights[i - 1];
        FindEdges(low);
        FindCrossings(low, m_heights[i]);
        if (m_cuts.empty()) {
            FollowAreas(low);
            continue;
        }
        m_cuts.push_back(m_heights[i]);
        for (const double cut : m_cuts) {
            SortEdges(low + (cut - low) / 2);
            FollowAreas(low);
            low = cut;
        }
    }
    for (const Edge* left : m_lefts)
        EndArea(*left, m_heights.back());
    return m_triangles;
}

} // namespace

ZORMathSetOfPoints ZorNestFill(const QList<ZORMathSetOfPoints>& outlines)
{
    return Sweep(outlines).Run();
}
