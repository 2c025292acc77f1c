#include "ZORNestSolverMix.h"

namespace ZORNestSolver {

namespace {

constexpr double kTrialShare = 0.08; // of the time of all trials goes to one
constexpr double kTrialTime = 1;     // seconds of a trial without end
constexpr double kTrialTimeOfItem = 0.01;
constexpr double kHopeForDensity = 1.2;

} // namespace

MixSearch::MixSearch(const PreparedJob& prepared, const Filler& filler, const std::vector<size_t>& items,
                     const std::vector<size_t>& stock)
    : m_prepared(prepared)
    , m_filler(filler)
    , m_items(items)
    , m_stock(stock)
    , m_area(prepared.GetArea(items))
{
}

void MixSearch::Offer(const Plan& plan)
{
    m_tried.insert(Count(plan));
    OfferDraft(plan);
}

void MixSearch::OfferDraft(const Plan& plan)
{
    if (m_hasBest && !plan.IsBetterThan(m_best))
        return;
    m_best = plan;
    m_hasBest = true;
}

MixSearch::Counts MixSearch::Count(const Plan& plan) const
{
    Counts counts(m_stock.size(), 0);
    for (const NestedSheet& sheet : plan.sheets)
        ++counts[sheet.kind];
    return counts;
}

/// Sheets in the order of the kinds, then the roll.
Mix MixSearch::MakeMix(const Counts& counts) const
{
    Mix mix;
    for (const bool rolls : {false, true})
        for (size_t k = 0; k < counts.size(); ++k)
            if (counts[k] > 0 && IsRoll(k) == rolls)
                mix.parts.push_back({k, counts[k]});
    return mix;
}

/// The costs of the sheets, and of the roll for what by its area they cannot hold. Infinite where they cannot
/// hold it and there is no roll.
double MixSearch::GetBound(const Counts& counts, double area) const
{
    double cost = 0;
    double left = area;
    for (size_t k = 0; k < counts.size(); ++k) {
        if (IsRoll(k))
            continue;
        cost += static_cast<double>(counts[k]) * m_prepared.GetCost(k);
        left -= static_cast<double>(counts[k]) * m_prepared.areas[k].area;
    }
    if (left <= 1e-9 * area)
        return cost;
    for (size_t k = 0; k < counts.size(); ++k)
        if (IsRoll(k) && counts[k] > 0)
            return cost + m_prepared.GetCost(k) * left / m_prepared.areas[k].window.GetHeight();
    return std::numeric_limits<double>::infinity();
}

/// Which share of the sheets of the best plan its items fill, with some hope for more.
double MixSearch::GetDensity() const
{
    double sheets = 0;
    for (const NestedSheet& sheet : m_best.sheets)
        sheets += IsRoll(sheet.kind) ? m_prepared.areas[sheet.kind].window.GetHeight() * sheet.usedLength
                                     : m_prepared.areas[sheet.kind].area;
    const double placed = m_area - m_prepared.GetArea(m_best.rest);
    return sheets > 0 ? std::clamp(kHopeForDensity * placed / sheets, 0.1, 1.0) : 1;
}

void MixSearch::AddMove(const Counts& counts, std::vector<Move>& moves) const
{
    for (size_t k = 0; k < counts.size(); ++k)
        if (counts[k] > m_stock[k] || (counts[k] > 0 && m_prepared.areas[k].window.IsEmpty()))
            return;
    const bool isEmpty = std::all_of(counts.begin(), counts.end(), [](size_t count) { return count == 0; });
    const double bound = GetBound(counts, m_area);
    const bool canHelp = !m_best.rest.empty() || bound < m_best.cost;
    if (!isEmpty && canHelp && !m_tried.contains(counts))
        moves.push_back({counts, bound, GetBound(counts, m_area / GetDensity())});
}

void MixSearch::AddSheetMoves(const Counts& from, std::vector<Move>& moves) const
{
    for (size_t a = 0; a < from.size(); ++a) {
        if (IsRoll(a))
            continue;
        Counts more = from;
        ++more[a];
        AddMove(more, moves);
        if (from[a] == 0)
            continue;
        Counts less = from;
        --less[a];
        AddMove(less, moves);
        for (size_t b = 0; b < from.size(); ++b) {
            if (IsRoll(b))
                continue;
            Counts replaced = less;
            ++replaced[b];
            if (b != a)
                AddMove(replaced, moves);
            for (size_t c = a; c < from.size(); ++c) { // one of b in place of one of a and one of c
                if (IsRoll(c) || less[c] == 0)
                    continue;
                Counts merged = replaced;
                --merged[c];
                AddMove(merged, moves);
            }
        }
    }
}

void MixSearch::AddRollMoves(const Counts& from, std::vector<Move>& moves) const
{
    Counts sheetsOnly = from;
    for (size_t k = 0; k < from.size(); ++k)
        if (IsRoll(k))
            sheetsOnly[k] = 0;
    AddMove(sheetsOnly, moves);
    for (size_t a = 0; a < from.size(); ++a) {
        Counts changed = sheetsOnly;
        ++changed[a]; // a roll, or a sheet in place of the roll
        AddMove(changed, moves);
        for (size_t b = 0; IsRoll(a) && b < from.size(); ++b) { // the tail moves to the roll
            if (IsRoll(b) || from[b] == 0)
                continue;
            Counts shorter = changed;
            --shorter[b];
            AddMove(shorter, moves);
        }
    }
}

void MixSearch::Improve(const FillEffort& effort, const Budget& budget)
{
    const double own = kTrialTime + kTrialTimeOfItem * static_cast<double>(m_items.size());
    const double share = kTrialShare * budget.GetRest();
    const auto limit = [&] { return budget.HasEnd() ? budget.LimitedTo(share) : budget.Limited(own); };
    bool improved = true;
    while (improved && !budget.IsOver()) {
        improved = false;
        std::vector<Move> moves;
        AddSheetMoves(Count(m_best), moves);
        AddRollMoves(Count(m_best), moves);
        std::stable_sort(moves.begin(), moves.end(), [](const Move& a, const Move& b) {
            return a.estimate != b.estimate ? a.estimate < b.estimate : a.bound < b.bound;
        });
        for (size_t i = 0; i < moves.size() && !improved && !budget.IsOver(); ++i) {
            if (!m_tried.insert(moves[i].counts).second)
                continue;
            const Plan plan = m_filler.Follow(MakeMix(moves[i].counts), m_items, effort, limit());
            improved = plan.IsBetterThan(m_best);
            if (improved)
                m_best = plan;
        }
    }
}

void MixSearch::Finish(const FillEffort& effort, const Budget& budget)
{
    const Counts counts = Count(m_best);
    if (budget.IsOver() || m_best.sheets.empty())
        return;
    const Plan plan = m_filler.Follow(MakeMix(counts), m_items, effort, budget);
    if (plan.IsBetterThan(m_best))
        m_best = plan;
}

} // namespace ZORNestSolver
