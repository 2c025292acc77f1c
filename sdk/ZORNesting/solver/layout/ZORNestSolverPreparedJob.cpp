#include "ZORNestSolverPreparedJob.h"

#include <array>
#include <map>
#include <optional>

namespace ZORNestSolver {

namespace {

constexpr double kThoroughSeconds = 0.05; // after a stop, for thorough preparation
constexpr double kQuickSeconds = 0.12;    // after a stop, for any preparation
constexpr size_t kItemsPerLook = 16;      // at the time
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

bool HasFreeAngles(const ItemType& type)
{
    return std::any_of(type.classes.begin(), type.classes.end(),
                       [](const PoseClass& poseClass) { return poseClass.IsContinuous(); });
}

/// Returns all numbers on which the preparation of a sheet depends, in an order that can be compared.
std::vector<double> GetNumbers(const SheetKind& kind)
{
    std::vector<double> numbers{kind.width,     kind.length,  kind.leftTrim,
                                kind.rightTrim, kind.topTrim, kind.bottomTrim};
    const auto append = [&numbers](const Polygon& polygon) {
        numbers.push_back(static_cast<double>(polygon.size()));
        for (const Ring& ring : polygon) {
            numbers.push_back(static_cast<double>(ring.size()));
            for (const Point& p : ring)
                numbers.insert(numbers.end(), {p.x, p.y});
        }
    };
    append(kind.outline);
    for (const Polygon& defect : kind.defects)
        append(defect);
    // Nothing else is infinite but the length of a sheet that cannot be used, as a roll's is not a number.
    std::replace_if(
        numbers.begin(), numbers.end(), [](double number) { return std::isnan(number); },
        -std::numeric_limits<double>::infinity());
    return numbers;
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
    AddKinds(patience);
    SetLevels();
}

PreparedJob::PreparedJob(const Job& newJob, const Budget& budget)
    : job(newJob)
{
    Patience patience(&budget);
    for (const Item& item : job.items)
        AddItem(item, patience);
    Patience patienceForKinds(&budget); // or one usable sheet would be missing after a stop among the items
    AddKinds(patienceForKinds);
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

void PreparedJob::AddKinds(Patience& patience)
{
    std::map<std::array<double, 4>, size_t> rows; // by window
    std::map<std::vector<double>, size_t> equals; // kinds with obstacles, by all that matters of them
    m_isUndecided.assign(types.size(), false);
    SheetEffort effort{[&patience] { return !patience.IsThorough(0); }};
    for (size_t k = 0; k < job.kinds.size(); ++k) {
        const SheetKind& kind = job.kinds[k];
        const bool isPlain = kind.outline.empty() && kind.defects.empty();
        const auto [known, isNew] =
            isPlain ? std::pair(equals.end(), true) : equals.emplace(GetNumbers(kind), k);
        areas.push_back(isNew ? MakeArea(kind, effort, patience) : areas[known->second]);
        AddRemarks(kind, areas.back());
        const Box& window = areas.back().window;
        m_rows.push_back(kNoRow);
        if (window.IsEmpty())
            continue;
        const std::array<double, 4> key{window.min.x, window.min.y, window.max.x, window.max.y};
        const auto [row, isNewRow] = rows.emplace(key, m_fits.size());
        if (isNewRow) {
            std::optional<std::vector<bool>> fits = FindFits(window, patience);
            if (fits)
                m_fits.push_back(std::move(*fits));
            else
                row->second = kNoRow;
        }
        m_rows.back() = row->second;
    }
    SetAsideUndecided();
}

/// Leaves sheets with obstacles unused once there is no time left, unless they are the first that can be used.
SheetArea PreparedJob::MakeArea(const SheetKind& kind, SheetEffort& effort, Patience& patience) const
{
    const bool isPlain = kind.outline.empty() && kind.defects.empty();
    const auto isUsable = [](const SheetArea& area) { return !area.window.IsEmpty(); };
    if (isPlain || patience.IsThere() || std::none_of(areas.begin(), areas.end(), isUsable))
        return PrepareSheet(kind, job, effort);
    SheetArea area;
    area.remarks.push_back("is not used: no time left");
    return area;
}

void PreparedJob::AddRemarks(const SheetKind& kind, const SheetArea& area)
{
    const std::string sheet = "sheet \"" + kind.name + "\" ";
    for (const std::string& remark : area.remarks)
        remarks.push_back(sheet + remark);
    if (area.window.IsEmpty() && area.remarks.empty())
        remarks.push_back(sheet
                          + (IsWithinReach(kind, job) ? "has no usable area" : "reaches beyond 1000 km"));
}

/// Returns for each item whether it fits the window. Soon after the end only for the first window, and only in the
/// middles of the families of rotations.
std::optional<std::vector<bool>> PreparedJob::FindFits(const Box& window, Patience& patience)
{
    if (!m_fits.empty() && !patience.IsThere()) {
        m_isCutShort = true;
        return std::nullopt;
    }
    std::vector<bool> fits(types.size(), false);
    bool isThorough = true;
    for (size_t item = 0; item < types.size(); ++item) {
        if (item % kItemsPerLook == 0)
            isThorough = patience.IsThorough(0);
        if (item % kItemsPerLook == 0 && !m_fits.empty() && !patience.IsThere()) {
            m_isCutShort = true;
            break;
        }
        if (!reasons[item].empty())
            continue;
        fits[item] =
            isThorough ? FindFitting(*types[item], window).has_value() : FitsAtMiddle(*types[item], window);
        m_isUndecided[item] = m_isUndecided[item] || (!isThorough && HasFreeAngles(*types[item]));
    }
    return fits;
}

/// Reports items of which only the lack of time leaves open whether they fit anywhere.
void PreparedJob::SetAsideUndecided()
{
    for (size_t item = 0; item < types.size(); ++item)
        if (reasons[item].empty() && (m_isCutShort || m_isUndecided[item])
            && std::none_of(m_fits.begin(), m_fits.end(),
                            [item](const std::vector<bool>& fits) { return fits[item]; }))
            reasons[item] = "no time left";
}

std::vector<size_t> PreparedJob::DropEqual(const std::vector<size_t>& kinds) const
{
    std::vector<bool> isKnown(m_fits.size(), false);
    std::vector<size_t> different;
    for (const size_t kind : kinds) {
        if (m_rows[kind] == kNoRow || isKnown[m_rows[kind]])
            continue;
        isKnown[m_rows[kind]] = true;
        different.push_back(kind);
    }
    return different;
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
