#include "ZORNestSolverPreparedJob.h"

#include "ZORNestSolverOffset.h"

#include <map>
#include <optional>

namespace ZORNestSolver {

namespace {

constexpr double kThoroughSeconds = 0.05; // after a stop, for thorough preparation
constexpr double kQuickSeconds = 0.12;    // after a stop, for any preparation
constexpr size_t kManySegments = 1000;    // too many for thorough preparation after a stop

/// Returns what is done differently with a part; "" where nothing is.
std::string GetRemark(const ItemType& type, bool isOver)
{
    switch (type.loss) {
    case OutlineLoss::None:
        break;
    case OutlineLoss::Coarse:
        return "has too many corners and is nested with a coarser outline";
    case OutlineLoss::Hull:
        return isOver ? "is nested within its hull: no time left"
                      : "crosses itself too often and is nested within its hull";
    case OutlineLoss::CostlyHull:
        return "has too many corners to be cleaned and is nested within its hull";
    }
    return {};
}

/// Returns why nothing of a sheet can be used.
std::string GetFault(const SheetKind& kind, const Job& job)
{
    if (!IsWithinReach(kind, job))
        return "reaches beyond 1000 km";
    return IsCostlyToClean(kind.outline) ? "has an outline with too many corners" : "has no usable area";
}

} // namespace

/// Decides how thoroughly to prepare items once a run is stopped or its time is over. Without a budget, nothing ends.
class Patience
{
public:
    explicit Patience(const Budget* budget)
        : m_budget(budget)
    {
    }
    /// \param segments  of the item to prepare
    bool IsThorough(size_t segments)
    {
        const double seconds = GetSecondsSinceEnd();
        return seconds < kThoroughSeconds && (!m_end || segments < kManySegments);
    }
    bool IsThere() { return GetSecondsSinceEnd() < kQuickSeconds; }

private:
    double GetSecondsSinceEnd()
    {
        const double now = GetThreadTime();
        if (!m_end && m_budget && (m_budget->IsStopped() || m_budget->GetRest() <= 0))
            m_end = now;
        return m_end ? now - *m_end : 0;
    }

    const Budget* m_budget; // not owned
    std::optional<double> m_end;
};

PreparedJob::PreparedJob(const Job& newJob)
    : job(newJob)
{
    Patience patience(nullptr);
    for (const Item& item : job.items)
        AddItem(item, patience);
    AddKinds();
    SetLevels();
}

PreparedJob::PreparedJob(const Job& newJob, const Budget& budget)
    : job(newJob)
{
    Patience patience(&budget);
    for (const Item& item : job.items)
        AddItem(item, patience);
    AddKinds();
    SetLevels();
}

void PreparedJob::AddItem(const Item& item, Patience& patience)
{
    std::string reason;
    ItemType type;
    size_t segments = 0;
    for (const Contour& contour : item.contours)
        segments += contour.segments.size();
    if (patience.IsThorough(segments))
        type = PrepareItem(item, job, reason, [&patience] { return !patience.IsThorough(0); });
    const bool isLeftOff = type.outer.empty() && reason.empty();
    if (isLeftOff && (types.empty() || patience.IsThere())) // the first one always
        type = PrepareHull(item, job, reason);
    else if (isLeftOff)
        reason = "no time left";
    if (const std::string remark = GetRemark(type, isLeftOff); reason.empty() && !remark.empty())
        remarks.push_back("part \"" + item.name + "\" " + remark);
    types.push_back(std::make_shared<const ItemType>(std::move(type)));
    reasons.push_back(reason);
}

void PreparedJob::SetLevels()
{
    std::map<int, size_t, std::greater<>> ranks; // by priority
    for (const Item& item : job.items)
        ranks[item.priority] = 0;
    for (auto& [priority, rank] : ranks)
        rank = levelCount++;
    for (const Item& item : job.items)
        levels.push_back(ranks[item.priority]);
}

void PreparedJob::AddKinds()
{
    for (const SheetKind& kind : job.kinds) {
        areas.push_back(PrepareSheet(kind, job));
        const Box& window = areas.back().window;
        if (window.IsEmpty())
            remarks.push_back("sheet \"" + kind.name + "\" " + GetFault(kind, job));
        for (size_t item = 0; item < types.size(); ++item)
            m_fits.push_back(reasons[item].empty() && !window.IsEmpty()
                             && FindFitting(*types[item], window).has_value());
    }
}

double PreparedJob::GetArea(const std::vector<size_t>& items) const
{
    double area = 0;
    for (const size_t item : items)
        area += types[item]->area;
    return area;
}

std::vector<double> PreparedJob::GetAreaOfLevels(const std::vector<size_t>& items) const
{
    std::vector<double> sums(levelCount, 0);
    for (const size_t item : items)
        sums[levels[item]] += types[item]->area;
    return sums;
}

double PreparedJob::GetCost(size_t kind) const
{
    const bool isFree =
        std::all_of(job.kinds.begin(), job.kinds.end(), [](const SheetKind& k) { return k.cost == 0; });
    if (!isFree)
        return job.kinds[kind].cost;
    return job.kinds[kind].width * (job.kinds[kind].IsRoll() ? 1 : job.kinds[kind].length);
}

} // namespace ZORNestSolver
