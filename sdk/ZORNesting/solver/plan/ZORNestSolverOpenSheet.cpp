#include "ZORNestSolverOpenSheet.h"

namespace ZORNestSolver {

namespace {

constexpr double kMargin = 1e-6; // more than the slack: a thinner part may lie deep in what it seems to touch
constexpr double kMinorShare = 0.1;  // how much less it matters to end low than to end left, or the reverse
constexpr size_t kMostCorners = 128; // the oldest ones are forgotten
constexpr size_t kMostCornersAtFirst = 2000; // of obstacles
constexpr size_t kFewestSlots = 16;          // room for items in the first layout
constexpr int kSamplesOfEmptySheet = 1000;
constexpr size_t kMostSampled = 1000; // items on a sheet; the memory of samples grows with the square
constexpr int kGridOfIrregular = 12;  // contacts that an irregular sheet offers in each direction

bool DoOverlap(const Box& a, const Box& b, double distance)
{
    const double reach = distance - kContactSlack;
    return a.min.x < b.max.x + reach && b.min.x < a.max.x + reach && a.min.y < b.max.y + reach
           && b.min.y < a.max.y + reach;
}

} // namespace

OpenSheet::OpenSheet(const PreparedJob& prepared, ContactPoses& poses, size_t kind, int stack, uint64_t seed)
    : m_prepared(prepared)
    , m_poses(poses)
    , m_kind(kind)
    , m_stack(stack)
    , m_area(prepared.areas[kind])
    , m_random(seed)
    , m_usable(GetUsableBox(prepared.job.kinds[kind], prepared.job))
    , m_isRefused(prepared.types.size(), false)
{
    AddCorner(m_usable.min);
    for (const Obstacle& obstacle : m_area.obstacles) {
        AddCorners(obstacle.box, obstacle.distance);
        for (const Ring& ring : obstacle.onSheet)
            if (GetSignedArea(ring) < 0) // a hole, which has room inside
                AddCorner(GetBox(ring).Grown(-obstacle.distance).min);
    }
    const Polygon& outline = prepared.job.kinds[kind].outline;
    if (outline.empty())
        return;
    const Box around = GetBox(outline);
    for (int x = 0; x < kGridOfIrregular; ++x)
        for (int y = 0; y < kGridOfIrregular; ++y)
            AddCorner({around.min.x + x * around.GetWidth() / kGridOfIrregular,
                       around.min.y + y * around.GetHeight() / kGridOfIrregular});
}

bool OpenSheet::IsWorthTrying(size_t item) const
{
    const double room = m_area.area * (1 + kContactSlack) - m_filled;
    return !m_isRefused[item] && m_prepared.types[item]->area <= room;
}

bool OpenSheet::IsInside(const Box& box) const
{
    return m_usable.Grown(kContactSlack).Contains(box);
}

double OpenSheet::GetEnd(const Box& box, bool isLow) const
{
    const Point end = box.max - m_usable.min;
    return isLow ? end.y + kMinorShare * end.x : end.x + kMinorShare * end.y;
}

Box OpenSheet::GetOutlineBox(size_t item, const Stand& stand) const
{
    const ItemType& type = *m_prepared.types[item];
    return type.GetExactBox(type.GetPose(stand.poseClass, stand.angle, stand.position));
}

bool OpenSheet::ClearsObstacles(size_t item, const ContactPose& pose, const Box& box) const
{
    const bool isFar =
        std::all_of(m_area.obstacles.begin(), m_area.obstacles.end(), [&box](const Obstacle& obstacle) {
            return !DoOverlap(box, obstacle.box, obstacle.distance + kMargin);
        });
    const ItemType& type = *m_prepared.types[item];
    const Point position = box.min - pose.box.min;
    return isFar
           || m_area.IsClear(Transform(type.GetPose(pose.poseClass, pose.angle, position)).Apply(type.outer));
}

/// The latest items are the most likely ones to be in the way.
bool OpenSheet::IsFree(size_t item, const ContactPose& pose, const Box& box) const
{
    const double distance = m_prepared.job.separation;
    return std::none_of(m_boxes.rbegin(), m_boxes.rend(),
                        [&](const Box& other) { return DoOverlap(box, other, distance); })
           && ClearsObstacles(item, pose, box);
}

std::optional<Stand> OpenSheet::FindContact(size_t item, std::span<const ContactPose> poses, bool isLow) const
{
    std::optional<Stand> best;
    double bestEnd = std::numeric_limits<double>::infinity();
    for (const ContactPose& pose : poses) {
        const Point size = pose.box.max - pose.box.min;
        for (const Point& corner : m_corners) {
            const Box box{corner, corner + size};
            const double end = GetEnd(box, isLow);
            if (end >= bestEnd || !IsInside(box) || !IsFree(item, pose, box))
                continue;
            best = Stand{corner - pose.box.min, pose.angle, pose.poseClass, 0};
            bestEnd = end;
        }
    }
    return best;
}

std::optional<Stand> OpenSheet::FindContact(size_t item, const Leaning& leaning)
{
    std::span<const ContactPose> poses = m_poses.Get(item);
    poses = poses.first(std::min(poses.size(), leaning.mostPoses));
    std::optional<Stand> best;
    if (leaning.pose && *leaning.pose < poses.size())
        best = FindContact(item, poses.subspan(*leaning.pose, 1), leaning.isLow);
    return best ? best : FindContact(item, poses, leaning.isLow);
}

/// The first free one of the corners between obstacles.
std::optional<Stand> OpenSheet::FindCornerPlace(size_t item)
{
    const std::vector<Stand>& places = m_poses.GetCornerPlaces(item, m_kind);
    const auto free = std::find_if(places.begin(), places.end(), [&](const Stand& stand) {
        const Box box = GetOutlineBox(item, stand);
        return std::none_of(m_boxes.begin(), m_boxes.end(), [&](const Box& other) {
            return DoOverlap(box, other, m_prepared.job.separation);
        });
    });
    return free == places.end() ? std::nullopt : std::optional(*free);
}

/// Makes room in the layout for so many items.
void OpenSheet::Reserve(size_t count)
{
    if (m_layout && count <= m_problem->items.size())
        return;
    size_t slots = m_layout ? m_problem->items.size() : kFewestSlots;
    while (slots < count)
        slots *= 2;
    m_problem = std::make_shared<Problem>();
    m_problem->types = m_prepared.types;
    m_problem->windows = {m_area.window};
    m_problem->hazards = m_area.hazards;
    m_problem->items = m_items;
    m_problem->items.resize(slots, m_items.empty() ? 0 : m_items.front());
    m_layout = std::make_unique<Layout>(m_problem);
    for (size_t i = 0; i < m_items.size(); ++i)
        m_layout->Place(i, m_stands[i]);
}

std::optional<Stand> OpenSheet::FindSample(size_t item, int samples)
{
    const size_t slot = m_items.size();
    Reserve(slot + 1);
    m_problem->items[slot] = item;
    if (m_prepared.job.kinds[m_kind].IsRoll()) {
        Box window = m_area.window;
        double right = window.min.x;
        for (const Box& box : m_boxes)
            right = std::max(right, box.max.x);
        window.max.x = right + m_prepared.types[item]->base.diameter + m_prepared.job.separation;
        m_layout->SetWindow(0, window);
    }
    Mover mover(*m_layout, m_random);
    return mover.FindFree(slot, 0, m_items.empty() ? std::max(samples, kSamplesOfEmptySheet) : samples);
}

bool OpenSheet::TryPlace(size_t item, int samples, const Leaning& leaning)
{
    const auto getEnd = [&](const Stand& stand) { return GetEnd(GetOutlineBox(item, stand), leaning.isLow); };
    std::optional<Stand> best = FindContact(item, leaning);
    const bool isEmptyBox = m_items.empty() && m_area.obstacles.empty();
    if (samples > 0 && m_items.size() < kMostSampled && !(best && isEmptyBox)) {
        const std::optional<Stand> sample = FindSample(item, samples);
        if (sample && (!best || getEnd(*sample) < getEnd(*best)))
            best = sample;
    }
    if (!best && isEmptyBox)
        best = FindFitting(*m_prepared.types[item], m_area.window);
    if (!best && !m_area.obstacles.empty())
        best = FindCornerPlace(item);
    if (!best) {
        m_isRefused[item] = true;
        return false;
    }
    Place(item, *best);
    m_column.reset();
    return true;
}

Point OpenSheet::GetColumnAfterAll() const
{
    Point low = m_usable.min;
    for (const Box& box : m_boxes)
        low.x = std::max(low.x, box.max.x + m_prepared.job.separation);
    return low;
}

/// Lays the box of an outline on a point, or above the boxes of the obstacles that are in its way.
std::optional<Box> OpenSheet::FindInColumn(const Box& outline, Point low) const
{
    Box box = outline.Moved(low - outline.min);
    const auto isInTheWay = [&box](const Obstacle& obstacle) {
        return DoOverlap(box, obstacle.box, obstacle.distance + kMargin);
    };
    while (IsInside(box)) {
        const auto found = std::find_if(m_area.obstacles.begin(), m_area.obstacles.end(), isInTheWay);
        if (found == m_area.obstacles.end())
            return box;
        low.y = found->box.max.y + found->distance + kMargin;
        box = outline.Moved(low - outline.min);
    }
    return std::nullopt;
}

bool OpenSheet::TryPlaceInColumn(size_t item)
{
    const Point next = m_column ? *m_column : GetColumnAfterAll();
    const std::vector<ContactPose>& poses = m_poses.Get(item);
    for (const bool isNew : {false, true}) {
        const Point low = isNew ? GetColumnAfterAll() : next;
        for (const ContactPose& pose : poses) {
            const std::optional<Box> box = FindInColumn(pose.box, low);
            if (!box)
                continue;
            Place(item, {box->min - pose.box.min, pose.angle, pose.poseClass, 0});
            m_column = Point{low.x, box->max.y + m_prepared.job.separation};
            return true;
        }
    }
    return false;
}

void OpenSheet::AddCorner(Point corner)
{
    const auto isNear = [corner](Point other) { return Length(other - corner) <= kContactSlack; };
    if (m_corners.size() < kMostCornersAtFirst && !std::any_of(m_corners.begin(), m_corners.end(), isNear))
        m_corners.push_back(corner);
}

/// Right of the box and above it, at its own edges and at those of the sheet.
void OpenSheet::AddCorners(const Box& box, double distance)
{
    const double right = box.max.x + distance;
    const double top = box.max.y + distance;
    AddCorner({right, m_usable.min.y});
    AddCorner({right, box.min.y});
    AddCorner({m_usable.min.x, top});
    AddCorner({box.min.x, top});
}

void OpenSheet::Place(size_t item, const Stand& stand)
{
    if (m_layout) {
        Reserve(m_items.size() + 1);
        m_problem->items[m_items.size()] = item;
        m_layout->Place(m_items.size(), stand);
    }
    const double distance = m_prepared.job.separation;
    const Box box = GetOutlineBox(item, stand);
    m_items.push_back(item);
    m_stands.push_back(stand);
    m_boxes.push_back(box);
    m_filled += m_prepared.types[item]->area;
    AddCorners(box, distance);
    std::erase_if(m_corners, [&](Point corner) { return DoOverlap({corner, corner}, box, distance); });
    if (m_corners.size() > kMostCorners)
        m_corners.erase(m_corners.begin(), m_corners.end() - kMostCorners);
}

std::vector<Placement> OpenSheet::GetPlacements() const
{
    std::vector<Placement> placements;
    for (size_t i = 0; i < m_items.size(); ++i)
        placements.push_back(
            {m_items[i], m_prepared.types[m_items[i]]->GetPose(m_stands[i].poseClass, m_stands[i].angle,
                                                               m_stands[i].position)});
    return placements;
}

} // namespace ZORNestSolver
