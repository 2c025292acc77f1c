#include "ZORNestSolverStrip.h"

#include <numeric>
#include <set>

namespace ZORNestSolver {

namespace {

constexpr int kConstructionSamples = 300;
constexpr double kFirstExploreStep = 0.04; // the share of the length by which it shrinks
constexpr double kLastExploreStep = 0.001;
constexpr double kExploreFactor = 2;
constexpr double kFirstCompressStep = 0.0005;
constexpr double kLastCompressStep = 0.00001;
constexpr double kSuccessFactor = 1.2;
constexpr double kFailureFactor = 0.6;
constexpr SeparationLimits kProbeLimits{50, 1}; // while the steps are large
constexpr SeparationLimits kQuickLimits{50, 2}; // at the first dead ends of a length
constexpr SeparationLimits kPatientLimits{200, 3};
constexpr int kPatienceGrowth = 10; // iterations for each dead end
constexpr SeparationLimits kCompressLimits{100, 5};
constexpr size_t kMostDeadEnds = 256;   // the worst ones are forgotten
constexpr double kPoolDeviation = 0.25; // of the pool's size
constexpr double kRowGap = 0.001;
constexpr int kExchangeAttempts = 20;
constexpr double kLargeShare = 0.75; // of the total hull area belongs to the large items

} // namespace

std::optional<ShortestPose> FindShortest(const ItemType& type, const Box& window)
{
    std::optional<ShortestPose> best;
    const double most = window.GetHeight() - 2 * type.margin;
    for (size_t c = 0; c < type.classes.size(); ++c) {
        const PoseClass& allowed = type.classes[c];
        const Box& extent = type.shapes[c].extent;
        ShortestPose pose{c, allowed.angle, extent.GetWidth()};
        if (allowed.IsContinuous()) {
            const auto turned =
                type.silhouette.FindShortest(allowed.mirrored, allowed.angle, allowed.deviation, most);
            if (!turned)
                continue;
            pose = {c, turned->angle, turned->length + 2 * type.margin};
        } else if (extent.GetHeight() > window.GetHeight() + kFitTolerance) {
            continue;
        }
        if (!best || pose.length < best->length)
            best = pose;
    }
    return best;
}

StripSearch::StripSearch(std::shared_ptr<const Problem> problem, uint64_t seed, Listener listener)
    : m_random(seed)
    , m_layout(std::move(problem))
    , m_mover(m_layout, m_random)
    , m_separator(m_layout, m_random)
    , m_listener(std::move(listener))
    , m_shortest(GetShortestLength())
    , m_exploreStep(kFirstExploreStep)
{
}

/// No layout can be shorter: the longest item must fit, and the area.
double StripSearch::GetShortestLength() const
{
    double longest = 0;
    double area = 0;
    std::set<const ItemType*> known;
    for (size_t i = 0; i < m_layout.GetItemCount(); ++i) {
        const ItemType& type = m_layout.GetType(i);
        area += type.area;
        if (!known.insert(&type).second)
            continue;
        if (const auto shortest = FindShortest(type, m_layout.GetWindow(0)))
            longest = std::max(longest, shortest->length);
    }
    return std::max(longest, area / m_layout.GetWindow(0).GetHeight());
}

void StripSearch::SetLength(double length)
{
    Box window = m_layout.GetWindow(0);
    window.max.x = window.min.x + length;
    m_layout.SetWindow(0, window);
}

void StripSearch::Construct(const Budget& budget)
{
    std::vector<size_t> order(m_layout.GetItemCount());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](size_t a, size_t b) {
        return m_layout.GetType(a).GetSize() > m_layout.GetType(b).GetSize();
    });
    const double left = m_layout.GetWindow(0).min.x;
    double used = 0;
    for (const size_t item : order) {
        SetLength(used + m_layout.GetType(item).base.diameter);
        std::optional<Stand> stand;
        if (!budget.IsRunOver())
            stand = m_mover.FindFree(item, 0, kConstructionSamples);
        m_layout.Place(item, stand ? *stand : FindBehind(item, left + used)); // behind all others is room
        used = std::max(used, m_layout.GetItemBox(item).max.x - left);
    }
    SetLength(used);
    if (!KeepAsBest())
        PlaceInRow();
}

/// A place right of a line and beside all hazards; every item fits the width.
Stand StripSearch::FindBehind(size_t item, double line) const
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Box behind = m_layout.GetWindow(0);
    behind.max.x = kInfinity;
    while (true) {
        behind.min.x = line;
        Stand stand = *FindFitting(m_layout.GetType(item), behind);
        Shape shape;
        const ItemType& type = m_layout.GetType(item);
        type.Turn(type.classes[stand.poseClass].mirrored, stand.angle, shape);
        stand.position.x = line - std::min(shape.box.min.x, shape.extent.min.x);
        double next = kInfinity; // right of the hazard that ends first
        for (const Hazard& hazard : m_layout.GetProblem().hazards) {
            const Box box = hazard.shape.box.Moved(hazard.position);
            if (box.max.x > line && box.Overlaps(shape.box.Moved(stand.position)))
                next = std::min(next, box.max.x);
        }
        if (next == kInfinity)
            return stand;
        line = next;
    }
}

/// One item behind the other with a gap, which is valid whatever the shapes.
void StripSearch::PlaceInRow()
{
    double used = 0;
    for (size_t item = 0; item < m_layout.GetItemCount(); ++item) {
        m_layout.Place(item, FindBehind(item, m_layout.GetWindow(0).min.x + used));
        used = m_layout.GetItemBox(item).max.x - m_layout.GetWindow(0).min.x;
        used += kRowGap * m_layout.GetType(item).base.diameter;
    }
    SetLength(used);
    KeepAsBest();
}

/// Turns the stand to the shortest pose of the item, and returns its shape.
Shape StripSearch::Shorten(size_t item, Stand& stand) const
{
    const ItemType& type = m_layout.GetType(item);
    if (const auto shortest = FindShortest(type, m_layout.GetWindow(0))) {
        stand.poseClass = static_cast<uint32_t>(shortest->poseClass);
        stand.angle = shortest->angle;
    }
    Shape turned;
    type.Turn(type.classes[stand.poseClass].mirrored, stand.angle, turned);
    return turned;
}

/// Moves all items into the strip, and turns those that have become too long for it.
void StripSearch::ClampItems()
{
    std::vector<Stand> stands = m_layout.GetStands();
    const Box& window = m_layout.GetWindow(0);
    for (size_t i = 0; i < stands.size(); ++i) {
        Box room = GetRoom(window, m_layout.GetShape(i));
        if (room.min.x > room.max.x)
            room = GetRoom(window, Shorten(i, stands[i]));
        Point& p = stands[i].position;
        p.x = std::max(room.min.x, std::min(p.x, room.max.x));
        p.y = std::max(room.min.y, std::min(p.y, room.max.y));
    }
    m_layout.PlaceAll(stands);
}

/// Pushes the items right of a random cut to the left, and into the strip.
void StripSearch::ShrinkTo(double length)
{
    const Box window = m_layout.GetWindow(0);
    const double by = window.GetWidth() - length;
    const double cut = m_random.Between(window.min.x, window.max.x);
    std::vector<Stand> stands = m_layout.GetStands();
    for (size_t i = 0; i < stands.size(); ++i)
        if (m_layout.GetItemBox(i).GetCentre().x > cut)
            stands[i].position.x -= by;
    SetLength(length);
    m_layout.PlaceAll(stands);
    ClampItems();
}

bool StripSearch::KeepAsBest()
{
    double right = -std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < m_layout.GetItemCount(); ++i)
        right = std::max(right, m_layout.GetItemExtent(i).max.x);
    const double length = right - m_layout.GetWindow(0).min.x;
    const bool isInside = length <= m_layout.GetWindow(0).GetWidth() * (1 + 1e-12);
    if (!isInside || !m_listener(m_layout.GetStands(), length))
        return false;
    m_length = length;
    m_best = m_layout.GetStands();
    m_deadEnds.clear();
    SetLength(m_length);
    return true;
}

std::vector<size_t> StripSearch::GetLargeItems() const
{
    const auto getArea = [this](size_t item) { return std::pow(m_layout.GetType(item).base.weight, 2); };
    std::vector<size_t> order(m_layout.GetItemCount());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return getArea(a) > getArea(b); });
    double total = 0;
    for (const size_t item : order)
        total += getArea(item);
    double covered = 0;
    size_t large = 0;
    while (large < order.size() && covered < kLargeShare * total)
        covered += getArea(order[large++]);
    order.resize(large);
    return order;
}

/// Two items of different types among the large ones change places.
void StripSearch::ExchangeLargeItems()
{
    const std::vector<size_t> large = GetLargeItems();
    const size_t first = large[m_random.Index(large.size())];
    for (int attempt = 0; attempt < kExchangeAttempts; ++attempt) {
        const size_t second = large[m_random.Index(large.size())];
        if (&m_layout.GetType(first) == &m_layout.GetType(second))
            continue;
        const Point move = m_layout.GetItemBox(second).GetCentre() - m_layout.GetItemBox(first).GetCentre();
        Stand a = m_layout.GetStand(first);
        Stand b = m_layout.GetStand(second);
        a.position = a.position + move;
        b.position = b.position - move;
        m_layout.Place(first, a);
        m_layout.Place(second, b);
        ClampItems();
        return;
    }
}

/// Remembers the state and returns to one of the better ones met at this length, changed at random.
void StripSearch::LeaveDeadEnd(double loss)
{
    const auto place = std::find_if(m_deadEnds.begin(), m_deadEnds.end(),
                                    [loss](const DeadEnd& other) { return other.loss > loss; });
    m_deadEnds.insert(place, DeadEnd{loss, m_layout.GetStands()});
    if (m_deadEnds.size() > kMostDeadEnds)
        m_deadEnds.pop_back();
    const double size = static_cast<double>(m_deadEnds.size());
    const double chosen = std::min(std::abs(m_random.Normal(kPoolDeviation * size)), size - 1);
    m_layout.ResetWeights();
    m_layout.PlaceAll(m_deadEnds[static_cast<size_t>(chosen)].stands);
    ExchangeLargeItems();
}

/// The more dead ends were met at this length, the more thoroughly each is searched.
SeparationLimits StripSearch::GetExploreLimits() const
{
    const int iterations = kQuickLimits.iterations + kPatienceGrowth * static_cast<int>(m_deadEnds.size());
    return iterations < kPatientLimits.iterations ? SeparationLimits{iterations, kQuickLimits.attempts}
                                                  : kPatientLimits;
}

void StripSearch::Explore(const Budget& budget)
{
    bool restart = true;
    while (!budget.IsOver() && CanShrink()) {
        if (restart) {
            RestoreBest();
            ShrinkTo(std::max(m_shortest, m_length * (1 - m_exploreStep)));
        }
        const bool isProbe = m_exploreStep > kLastExploreStep;
        const double loss = m_separator.Separate(isProbe ? kProbeLimits : GetExploreLimits(), budget);
        const bool shorter = loss <= 0 && KeepAsBest();
        restart = shorter || isProbe;
        if (shorter)
            m_exploreStep = std::min(kFirstExploreStep, m_exploreStep * kExploreFactor);
        else if (isProbe) // too bold
            m_exploreStep = std::max(kLastExploreStep, m_exploreStep / kExploreFactor);
        else
            LeaveDeadEnd(loss);
    }
}

void StripSearch::RestoreBest()
{
    SetLength(m_length);
    m_layout.PlaceAll(m_best);
    m_layout.ResetWeights();
}

void StripSearch::Continue(const std::vector<Stand>& stands)
{
    if (stands.empty())
        return;
    SetLength(std::numeric_limits<double>::infinity());
    m_layout.PlaceAll(stands);
    KeepAsBest();
}

void StripSearch::Compress(const Budget& budget)
{
    double step = kFirstCompressStep;
    while (!budget.IsOver() && CanShrink()) {
        RestoreBest();
        ShrinkTo(std::max(m_shortest, m_length * (1 - step)));
        const bool shorter = m_separator.Separate(kCompressLimits, budget) <= 0 && KeepAsBest();
        step = std::clamp(step * (shorter ? kSuccessFactor : kFailureFactor), kLastCompressStep,
                          kFirstCompressStep);
    }
}

} // namespace ZORNestSolver
