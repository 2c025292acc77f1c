#include "ZORNestJoiner_p.h"

#include <ZORWorker/ZORWorkContext.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <tuple>

namespace {

using Ends = std::tuple<double, double, double, double, double, double, int>;

// The same for a piece and its reverse.
Ends Normalize(const ZORNestPiece& piece)
{
    ZORNestPiece copy = piece;
    const auto key = [](ZORNestPlanePoint p) { return std::pair(p.x, p.y); };
    if (key(copy.end) < key(copy.start) || (copy.end == copy.start && copy.turn < 0))
        copy.Reverse();
    return {copy.start.x, copy.start.y, copy.end.x, copy.end.y, copy.center.x, copy.center.y, copy.turn};
}

QList<Ends> Normalize(const ZORNestChain& chain)
{
    QList<Ends> ends;
    for (const ZORNestCurve& curve : chain.curves) {
        for (const ZORNestPiece& piece : curve.pieces)
            ends.append(Normalize(piece));
    }
    std::sort(ends.begin(), ends.end());
    return ends;
}

size_t GetHash(const ZORNestChain& chain)
{
    size_t sum = 0; // whatever the order
    for (const ZORNestCurve& curve : chain.curves) {
        for (const ZORNestPiece& piece : curve.pieces) {
            const auto [ax, ay, bx, by, cx, cy, turn] = Normalize(piece);
            sum += qHashMulti(size_t(0), ax, ay, bx, by, cx, cy, turn);
        }
    }
    return sum;
}

qint64 RemoveDuplicates(QList<ZORNestChain>& chains, const ZORWorkContext& context)
{
    QMultiHash<size_t, qsizetype> known;
    QList<ZORNestChain> unique;
    for (ZORNestChain& chain : chains) {
        context.ThrowIfCanceled();
        const size_t hash = GetHash(chain);
        bool isKnown = false;
        for (auto it = known.constFind(hash); it != known.cend() && it.key() == hash && !isKnown; ++it)
            isKnown = Normalize(unique[it.value()]) == Normalize(chain);
        if (isKnown)
            continue;
        known.insert(hash, unique.size());
        unique.append(std::move(chain));
    }
    const qint64 removed = chains.size() - unique.size();
    chains = std::move(unique);
    return removed;
}

// Ends that differ by rounding alone are no gap to tell of.
void Count(double gap, ZORNestJoiner::Outcome& outcome)
{
    if (gap <= ZORNestJoiner::kRounding)
        return;
    ++outcome.gaps;
    outcome.largestGap = std::max(outcome.largestGap, gap);
}

class Joining
{
public:
    Joining(const QList<ZORNestChain>& chains, double tolerance, const ZORWorkContext& context)
        : m_chains(chains)
        , m_tolerance(tolerance)
        , m_context(context)
        , m_links(2 * chains.size(), -1)
    {
    }

    void Link();
    void Walk(ZORNestJoiner::Outcome& outcome);

private:
    // End 2 i is the start of chain i, end 2 i + 1 its end.
    ZORNestPlanePoint GetPoint(qsizetype end) const
    {
        const ZORNestChain& chain = m_chains[end / 2];
        return end % 2 == 0 ? chain.curves.constFirst().GetStart() : chain.curves.constLast().GetEnd();
    }
    const QString& GetLayer(qsizetype end) const
    {
        const ZORNestChain& chain = m_chains[end / 2];
        return (end % 2 == 0 ? chain.curves.constFirst() : chain.curves.constLast()).look.layer;
    }
    bool IsCloseable(qsizetype chain) const
    {
        const ZORNestPlaneBox box = m_chains[chain].GetBox();
        return std::max(box.GetWidth(), box.GetHeight()) > 2 * m_tolerance;
    }
    void FindPairs();
    ZORNestChain Follow(qsizetype firstEnd, ZORNestJoiner::Outcome& outcome);
    /// Which of two lines moves its end.
    enum class Yielding { First, Last };
    static void Meet(ZORNestChain& chain, ZORNestPiece& first, Yielding yielding,
                     ZORNestJoiner::Outcome& outcome);

    struct Pair
    {
        double distance;
        bool isOtherLayer;
        qsizetype a, b;
        auto GetKey() const { return std::tuple(distance, isOtherLayer, a, b); }
    };

    const QList<ZORNestChain>& m_chains;
    const double m_tolerance;
    const ZORWorkContext& m_context;
    QList<Pair> m_pairs;
    QList<qsizetype> m_links; // the end that each end is joined to, or -1
    QList<bool> m_isUsed;
};

void Joining::FindPairs()
{
    struct Cell
    {
        qint64 x, y;
        qsizetype end;
        auto GetKey() const { return std::tuple(x, y, end); }
    };
    const double size = std::max(m_tolerance, 1e-6);
    std::vector<Cell> cells;
    for (qsizetype end = 0; end < m_links.size(); ++end) {
        const ZORNestPlanePoint p = GetPoint(end);
        cells.push_back({qint64(std::floor(p.x / size)), qint64(std::floor(p.y / size)), end});
    }
    std::sort(cells.begin(), cells.end(),
              [](const Cell& a, const Cell& b) { return a.GetKey() < b.GetKey(); });
    for (const Cell& cell : cells) {
        m_context.ThrowIfCanceled();
        int found = 0;
        for (qint64 dx = -1; dx <= 1; ++dx) {
            const std::tuple from(cell.x + dx, cell.y - 1, qsizetype(0));
            auto it = std::lower_bound(cells.begin(), cells.end(), from,
                                       [](const Cell& a, const auto& key) { return a.GetKey() < key; });
            for (int seen = 0; it != cells.end() && it->x == cell.x + dx && it->y <= cell.y + 1;
                 ++it, ++seen) {
                if (found == ZORNestJoiner::kMaximumPairs || seen == 8 * ZORNestJoiner::kMaximumPairs)
                    break;
                if (it->end <= cell.end || (it->end / 2 == cell.end / 2 && !IsCloseable(cell.end / 2)))
                    continue;
                const double distance = Length(GetPoint(cell.end) - GetPoint(it->end));
                if (distance > m_tolerance)
                    continue;
                m_pairs.append({distance, GetLayer(cell.end) != GetLayer(it->end), cell.end, it->end});
                ++found;
            }
        }
    }
}

void Joining::Link()
{
    FindPairs();
    std::sort(m_pairs.begin(), m_pairs.end(),
              [](const Pair& a, const Pair& b) { return a.GetKey() < b.GetKey(); });
    for (const Pair& pair : m_pairs) {
        if (m_links[pair.a] < 0 && m_links[pair.b] < 0) {
            m_links[pair.a] = pair.b;
            m_links[pair.b] = pair.a;
        }
    }
}

// Makes the last piece of a chain and the one that follows it meet: one of them moves its end there, if it is a line
// that keeps a length; otherwise a line goes between them.
void Joining::Meet(ZORNestChain& chain, ZORNestPiece& first, Yielding yielding,
                   ZORNestJoiner::Outcome& outcome)
{
    ZORNestPiece& last = chain.curves.last().pieces.last();
    const double gap = Length(last.end - first.start);
    if (gap == 0)
        return;
    Count(gap, outcome);
    const bool canFirstYield = first.IsLine() && first.end != last.end;
    const bool canLastYield = last.IsLine() && last.start != first.start;
    if (canFirstYield && (yielding == Yielding::First || !canLastYield))
        first.start = last.end;
    else if (canLastYield)
        last.end = first.start;
    else
        chain.curves.append({{{last.end, first.start, {}, 0}}, false, chain.curves.constLast().look});
}

// The chain that begins at an end and goes from link to link.
ZORNestChain Joining::Follow(qsizetype firstEnd, ZORNestJoiner::Outcome& outcome)
{
    ZORNestChain chain;
    qsizetype end = firstEnd;
    for (;;) {
        ZORNestChain next = m_chains[end / 2];
        m_isUsed[end / 2] = true;
        if (end % 2 == 1)
            next.Reverse();
        if (!chain.curves.isEmpty())
            Meet(chain, next.curves.first().pieces.first(), Yielding::First, outcome);
        chain.curves.append(next.curves);
        const qsizetype other = end ^ 1;
        end = m_links[other];
        if (end < 0)
            return chain;
        if (end == firstEnd) {
            Meet(chain, chain.curves.first().pieces.first(), Yielding::Last, outcome);
            return chain;
        }
    }
}

void Joining::Walk(ZORNestJoiner::Outcome& outcome)
{
    m_isUsed.fill(false, m_chains.size());
    for (qsizetype i = 0; i < m_chains.size(); ++i) {
        m_context.ThrowIfCanceled();
        if (m_isUsed[i])
            continue;
        // Back to where the chain begins, or once around.
        qsizetype first = 2 * i;
        while (m_links[first] >= 0 && m_links[first] != (2 * i ^ 1))
            first = m_links[first] ^ 1;
        const bool isRing = m_links[first] >= 0;
        ZORNestChain chain = Follow(isRing ? 2 * i : first, outcome);
        (chain.IsClosed() ? outcome.closed : outcome.open).append(std::move(chain));
    }
}

} // namespace

ZORNestJoiner::Outcome ZORNestJoiner::Join(QList<ZORNestChain> chains, double tolerance,
                                           const ZORWorkContext& context)
{
    Outcome outcome;
    outcome.duplicates = RemoveDuplicates(chains, context);
    QList<ZORNestChain> loose;
    for (ZORNestChain& chain : chains) {
        if (chain.IsClosed())
            outcome.closed.append(std::move(chain));
        else
            loose.append(std::move(chain));
    }
    Joining joining(loose, tolerance, context);
    joining.Link();
    joining.Walk(outcome);
    return outcome;
}
