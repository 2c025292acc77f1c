#include "SolverOracle.h"

#include <cstdint>
#include <numbers>

namespace ZORNestSolver::SolverOracle {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTolerance = 1.01e-6;
constexpr int kStepsPerTurn = 64;
constexpr int kSamplesPerEdge = 6;

/// Closed chains of short straight edges.
struct Region
{
    std::vector<std::vector<Point>> rings;
    double error = 0; // of sampled arcs
    Box box;
};

void AppendSampledArc(std::vector<Point>& ring, double& error, Point start, const Segment& arc)
{
    const double radius = std::hypot(start.x - arc.centre.x, start.y - arc.centre.y);
    const double from = std::atan2(start.y - arc.centre.y, start.x - arc.centre.x);
    double turn = std::atan2(arc.end.y - arc.centre.y, arc.end.x - arc.centre.x) - from;
    const double gap = std::hypot(arc.end.x - start.x, arc.end.y - start.y);
    const double sign = arc.counterClockwise ? 1 : -1;
    if (gap <= 1e-9 * std::min(radius, 1000.0)) {
        turn = 2 * kPi;
    } else {
        turn = sign * std::remainder(turn, 2 * kPi);
        if (std::abs(turn) < 1e-12)
            return; // straight
        turn += turn < 0 ? 2 * kPi : 0;
    }
    const int steps = static_cast<int>(std::ceil(turn / (2 * kPi) * kStepsPerTurn));
    for (int i = 1; i <= steps; ++i) {
        const double angle = from + sign * turn * i / steps;
        ring.push_back({arc.centre.x + radius * std::cos(angle), arc.centre.y + radius * std::sin(angle)});
    }
    error = std::max(error, radius * (1 - std::cos(turn / steps / 2)));
}

Region MakeRegion(std::vector<std::vector<Point>> rings, double error)
{
    Region region{std::move(rings), error, {}};
    for (const std::vector<Point>& ring : region.rings)
        for (const Point p : ring)
            region.box.Add(p);
    return region;
}

Region Sample(const Item& item, const Pose& pose)
{
    double cosine = std::cos(pose.angle);
    double sine = std::sin(pose.angle);
    if (std::abs(cosine) < 1e-12 || std::abs(sine) < 1e-12) { // quarter turns are exact
        cosine = std::round(cosine);
        sine = std::round(sine);
    }
    std::vector<std::vector<Point>> rings;
    double error = 0;
    for (const Contour& contour : item.contours) {
        std::vector<Point> ring{contour.start};
        Point from = contour.start;
        for (const Segment& segment : contour.segments) {
            if (segment.isArc)
                AppendSampledArc(ring, error, from, segment);
            ring.push_back(segment.end);
            from = segment.end;
        }
        for (Point& p : ring) {
            const double x = pose.mirrored ? -p.x : p.x;
            p = {cosine * x - sine * p.y + pose.position.x, sine * x + cosine * p.y + pose.position.y};
        }
        rings.push_back(ring);
    }
    return MakeRegion(rings, error);
}

double GetEdgeDistance(Point p, Point a, Point b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    double part = squared > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / squared : 0;
    part = std::min(1.0, std::max(0.0, part));
    return std::hypot(p.x - a.x - part * dx, p.y - a.y - part * dy);
}

double GetDistance(Point p, const Region& region)
{
    double distance = std::numeric_limits<double>::infinity();
    for (const std::vector<Point>& ring : region.rings)
        for (size_t i = 0; i < ring.size(); ++i)
            distance = std::min(distance, GetEdgeDistance(p, ring[i], ring[(i + 1) % ring.size()]));
    return distance;
}

/// By the angles under which the edges appear; only for points off the edges.
bool IsIn(Point p, const Region& region)
{
    bool isIn = false;
    for (const std::vector<Point>& ring : region.rings) {
        double sum = 0;
        for (size_t i = 0; i < ring.size(); ++i) {
            const double ax = ring[i].x - p.x;
            const double ay = ring[i].y - p.y;
            const double bx = ring[(i + 1) % ring.size()].x - p.x;
            const double by = ring[(i + 1) % ring.size()].y - p.y;
            sum += std::atan2(ax * by - ay * bx, ax * bx + ay * by);
        }
        isIn = isIn != (std::abs(sum) > kPi);
    }
    return isIn;
}

bool AreBoxesNear(const Box& a, const Box& b, double distance)
{
    return a.min.x <= b.max.x + distance && b.min.x <= a.max.x + distance && a.min.y <= b.max.y + distance
           && b.min.y <= a.max.y + distance;
}

/// Where the edges of a region must not lie.
enum class Forbidden { Inside, Outside };

/// Whether samples of one region's edges come too near to the other, or lie deeper where they must not than the tolerance.
bool IsTooNear(const Region& a, const Region& b, double distance, Forbidden forbidden)
{
    const double error = a.error + b.error;
    const double least = distance - kTolerance - error;
    for (const std::vector<Point>& ring : a.rings) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point from = ring[i];
            const Point to = ring[(i + 1) % ring.size()];
            for (int k = 0; k < kSamplesPerEdge; ++k) {
                const Point p = from + (to - from) * (double(k) / kSamplesPerEdge);
                const double measured = GetDistance(p, b);
                if (measured < least
                    || (measured > kTolerance + error && IsIn(p, b) == (forbidden == Forbidden::Inside)))
                    return true;
            }
        }
    }
    return false;
}

/// Points on a grid that lie in both regions, which finds equal ones.
bool HasCommonPoint(const Region& a, const Region& b)
{
    constexpr int kCount = 7;
    const double error = kTolerance + a.error + b.error;
    for (int i = 1; i < kCount; ++i) {
        for (int j = 1; j < kCount; ++j) {
            const Point p = a.box.min + Point{a.box.GetWidth() * i / kCount, a.box.GetHeight() * j / kCount};
            if (GetDistance(p, a) > error && GetDistance(p, b) > error && IsIn(p, a) && IsIn(p, b))
                return true;
        }
    }
    return false;
}

bool AreApart(const Region& a, const Region& b, double distance)
{
    return !AreBoxesNear(a.box, b.box, distance)
           || !(IsTooNear(a, b, distance, Forbidden::Inside) || IsTooNear(b, a, distance, Forbidden::Inside)
                || HasCommonPoint(a, b));
}

/// A part keeps the distance from all that a sheet's outline does not hold.
bool IsWithin(const Region& part, const Region& sheet, double distance)
{
    return !IsTooNear(part, sheet, distance, Forbidden::Outside)
           && !IsTooNear(sheet, part, distance, Forbidden::Inside);
}

double ToDegrees(double angle)
{
    return angle * 180 / kPi;
}

bool IsTurnAllowed(double degrees, double direction, double deviation, double increment)
{
    constexpr double kNoise = 1e-8;
    for (int turn = -3; turn <= 3; ++turn) {
        const double off = degrees - direction + turn * 360;
        if (std::abs(off) > deviation + kNoise)
            continue;
        if (deviation <= 0 || increment <= 0
            || std::abs(off - std::round(off / increment) * increment) < kNoise)
            return true;
    }
    return false;
}

bool IsPoseAllowed(const Job& job, const Item& item, const Pose& pose)
{
    const bool isOther = pose.mirrored != item.mirrored;
    if (isOther && (job.singleSided || !item.flippable))
        return false;
    const double deviation = ToDegrees(item.maxDeviation > 0 ? item.maxDeviation : job.maxDeviation);
    const double increment =
        ToDegrees(item.deviationIncrement > 0 ? item.deviationIncrement : job.deviationIncrement);
    const double degrees = std::fmod(ToDegrees(pose.angle), 360);
    for (const double angle : item.allowedAngles)
        if (IsTurnAllowed(degrees, std::fmod(ToDegrees(angle), 360), deviation, increment))
            return true;
    if (!item.allowedAngles.empty())
        return false;
    const bool allowed[] = {true, job.grain90 || item.grain90, job.grain180 || item.grain180,
                            job.grain270 || item.grain270};
    for (int k = 0; k < 4; ++k) {
        const double direction = std::fmod(ToDegrees(item.orientation), 360) + 90 * k;
        if (allowed[k] && IsTurnAllowed(degrees, isOther ? -direction : direction, deviation, increment))
            return true;
    }
    return false;
}

class SheetJudge
{
public:
    SheetJudge(const Job& job, const NestedSheet& sheet, std::vector<std::string>& faults)
        : m_job(job)
        , m_kind(job.kinds[sheet.kind])
        , m_sheet(sheet)
        , m_faults(faults)
    {
    }
    void Judge()
    {
        for (const Placement& placement : m_sheet.placements)
            m_regions.push_back(Sample(m_job.items[placement.item], placement.pose));
        for (size_t i = 0; i < m_regions.size(); ++i) {
            if (!IsPoseAllowed(m_job, m_job.items[m_sheet.placements[i].item], m_sheet.placements[i].pose))
                Report(i, "pose");
            JudgeBox(i);
            JudgeSurroundings(i);
            for (size_t k = 0; k < i; ++k)
                if (!AreApart(m_regions[i], m_regions[k], m_job.separation))
                    Report(i, "overlap");
        }
    }

private:
    void Report(size_t i, const std::string& text)
    {
        m_faults.push_back(text + " of placement " + std::to_string(i) + ", item "
                           + std::to_string(m_sheet.placements[i].item));
    }
    void JudgeBox(size_t i)
    {
        const Box& box = m_regions[i].box;
        const double right = (m_kind.IsRoll() ? m_sheet.usedLength : m_kind.length) - m_kind.rightTrim;
        const double frame = m_job.frameWidth - kTolerance;
        const bool fits = box.min.x >= m_kind.leftTrim + frame && box.min.y >= m_kind.bottomTrim + frame
                          && box.max.x <= right - frame && box.max.y <= m_kind.width - m_kind.topTrim - frame;
        if (!fits)
            Report(i, "edge");
    }
    void JudgeSurroundings(size_t i)
    {
        for (const Polygon& defect : m_kind.defects)
            if (!AreApart(m_regions[i], MakeRegion(defect, 0), m_job.defectSeparation))
                Report(i, "defect");
        if (!m_kind.outline.empty()
            && !IsWithin(m_regions[i], MakeRegion(m_kind.outline, 0), m_job.frameWidth))
            Report(i, "outline");
    }

    const Job& m_job;
    const SheetKind& m_kind;
    const NestedSheet& m_sheet;
    std::vector<std::string>& m_faults;
    std::vector<Region> m_regions;
};

void JudgeQuantities(const Job& job, const Solution& solution, std::vector<std::string>& faults)
{
    std::vector<int> items(job.items.size(), 0);
    std::vector<int> sheets(job.kinds.size(), 0);
    for (const NestedSheet& sheet : solution.sheets) {
        if (sheet.stack < 1 || sheet.stack > std::max(1, job.stackSize) || sheet.placements.empty())
            faults.push_back("empty sheet, or stack of " + std::to_string(sheet.stack));
        sheets[sheet.kind] += sheet.stack;
        for (const Placement& placement : sheet.placements)
            items[placement.item] += sheet.stack;
    }
    for (const UnplacedItem& unplaced : solution.unplaced) {
        items[unplaced.item] += unplaced.count;
        if (unplaced.count < 1 || unplaced.reason.empty())
            faults.push_back("unplaced without count or reason: item " + std::to_string(unplaced.item));
    }
    for (size_t i = 0; i < items.size(); ++i)
        if (items[i] != std::max(0, job.items[i].quantity))
            faults.push_back("quantity of item " + std::to_string(i));
    for (size_t k = 0; k < sheets.size(); ++k) {
        const int quantity = job.kinds[k].quantity;
        if (quantity >= 0 && (!job.kinds[k].IsRoll() || quantity == 0) && sheets[k] > quantity)
            faults.push_back("stock of kind " + std::to_string(k));
    }
}

} // namespace

std::vector<std::string> FindFaults(const Job& job, const Solution& solution)
{
    std::vector<std::string> faults;
    for (const NestedSheet& sheet : solution.sheets)
        SheetJudge(job, sheet, faults).Judge();
    JudgeQuantities(job, solution, faults);
    return faults;
}

Box GetBox(const Item& item, const Pose& pose)
{
    return Sample(item, pose).box;
}

} // namespace ZORNestSolver::SolverOracle
