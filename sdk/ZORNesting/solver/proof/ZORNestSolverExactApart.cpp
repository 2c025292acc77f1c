#include "ZORNestSolverExactApart.h"

#include "ZORNestSolverExactShape.h"

namespace ZORNestSolver::Exact {

namespace {

constexpr double kRounding = 1e-9;
constexpr double kDepth = kTolerance + kRounding;

/// Pairs of pieces that come near each other, by those of the first shape.
using Pairs = std::vector<std::pair<size_t, size_t>>;

/// Checks that no piece of a shape runs deeper in a region than the tolerance.
class DepthCheck
{
public:
    DepthCheck(const Shape& shape, const Shape& region, Pairs pairs)
        : m_shape(shape)
        , m_region(region)
        , m_pairs(std::move(pairs))
    {
        std::sort(m_pairs.begin(), m_pairs.end());
    }

    bool Run()
    {
        for (size_t contour = 0; contour < m_shape.GetStarts().size(); ++contour)
            if (!IsShallow(contour))
                return false;
        return true;
    }

private:
    /// Follows a contour. Where it is not near the region's boundary, it stays inside or outside; so one
    /// point of each stretch decides.
    bool IsShallow(size_t contour)
    {
        const std::vector<size_t>& starts = m_shape.GetStarts();
        const size_t end = contour + 1 < starts.size() ? starts[contour + 1] : m_shape.GetPieces().size();
        if (m_next == m_pairs.size() || m_pairs[m_next].first >= end)
            return !m_region.IsInside(m_shape.GetPieces()[starts[contour]].a);
        m_isKnown = false;
        while (m_next < m_pairs.size() && m_pairs[m_next].first < end)
            if (!IsNextShallow())
                return false;
        return true;
    }

    /// Checks the next piece that has pairs.
    bool IsNextShallow()
    {
        const size_t index = m_pairs[m_next].first;
        const Piece& piece = m_shape.GetPieces()[index];
        m_near.clear();
        for (; m_next < m_pairs.size() && m_pairs[m_next].first == index; ++m_next)
            AppendNearParts(m_near, piece, m_region.GetPieces()[m_pairs[m_next].second], kDepth);
        std::sort(m_near.begin(), m_near.end(), [](Interval a, Interval b) { return a.low < b.low; });
        const double shortest = kRounding / piece.GetLength();
        double from = 0;
        for (const Interval& part : m_near) {
            if (part.low - from > shortest && !IsStretchShallow(piece, from, part.low))
                return false;
            from = std::max(from, part.high);
        }
        const bool endsFar = 1 - from > shortest;
        if (endsFar && !IsStretchShallow(piece, from, 1))
            return false;
        m_isKnown = endsFar;
        return true;
    }

    bool IsStretchShallow(const Piece& piece, double from, double to) const
    {
        const bool continuesOther = from == 0 && m_isKnown; // which lies outside
        return continuesOther || !m_region.IsInside(piece.Evaluate((from + to) / 2));
    }

    const Shape& m_shape;
    const Shape& m_region;
    Pairs m_pairs;
    size_t m_next = 0;
    bool m_isKnown = false; // the contour is away from the boundary, outside of the region
    std::vector<Interval> m_near;
};

bool HasCommonProbe(const Shape& shape, const Shape& region)
{
    return std::any_of(shape.GetProbes().begin(), shape.GetProbes().end(), [&region](Point probe) {
        return region.IsInside(probe) && region.GetDistanceToPieces(probe) > kDepth;
    });
}

bool AreShallow(const Shape& a, const Shape& b)
{
    if (HasCommonProbe(a, b) || HasCommonProbe(b, a))
        return false;
    Pairs ofA;
    Pairs ofB;
    a.GetTree().ForEachPair(b.GetTree(), kDepth, [&](size_t i, size_t j) {
        ofA.push_back({i, j});
        ofB.push_back({j, i});
        return true;
    });
    return DepthCheck(a, b, std::move(ofA)).Run() && DepthCheck(b, a, std::move(ofB)).Run();
}

/// A contour whose pieces keep away from the region's lies in it with its first point, or not at all.
bool HasContourIn(const Shape& shape, const Shape& region)
{
    return std::any_of(shape.GetStarts().begin(), shape.GetStarts().end(),
                       [&](size_t start) { return region.IsInside(shape.GetPieces()[start].a); });
}

} // namespace

bool AreApart(const Shape& a, const Shape& b, double distance)
{
    const double reach = distance - kTolerance;
    const bool mayMeet =
        !a.IsBounded() || !b.IsBounded() || GetGap(a.GetBox(), b.GetBox()) <= std::max(reach, 0.0);
    if (!mayMeet)
        return true;
    if (reach <= 0)
        return AreShallow(a, b);
    const bool isFar = a.GetTree().ForEachPair(b.GetTree(), reach - kRounding, [&](size_t i, size_t j) {
        return GetDistance(a.GetPieces()[i], b.GetPieces()[j]) >= reach - kRounding;
    });
    return isFar && !HasContourIn(a, b) && !HasContourIn(b, a);
}

} // namespace ZORNestSolver::Exact
