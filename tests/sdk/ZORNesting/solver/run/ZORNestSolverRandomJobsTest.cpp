#include "sdk/ZORNesting/solver/SolverOracle.h"
#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <cstdlib>
#include <thread>
#include <tuple>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr size_t kJobs = 250; // ZOR_RANDOM_JOBS in the environment: another number of jobs

/// Makes jobs that combine all options; sizes often fit exactly.
class JobMaker
{
public:
    explicit JobMaker(uint64_t seed)
        : m_random(seed)
    {
    }

    Job Make()
    {
        Job job;
        job.seed = m_random.Next();
        SetRules(job);
        const size_t kinds = 1 + m_random.Index(3);
        for (size_t i = 0; i < kinds; ++i)
            job.kinds.push_back(MakeKind(job));
        const size_t items = 1 + m_random.Index(5);
        for (size_t i = 0; i < items; ++i)
            job.items.push_back(MakeItem(job));
        if (IsChosen(3)) { // a twin that counts more or less
            job.items.push_back(job.items[m_random.Index(job.items.size())]);
            job.items.back().priority = static_cast<int>(m_random.Index(3));
        }
        return job;
    }

private:
    bool IsChosen(size_t oneIn) { return m_random.Index(oneIn) == 0; }
    double Pick(std::initializer_list<double> values)
    {
        return *(values.begin() + m_random.Index(values.size()));
    }

    void SetRules(Job& job)
    {
        job.separation = Pick({0, 0, 0.5, 2, 5});
        job.frameWidth = Pick({0, 0, 3});
        job.defectSeparation = Pick({0, 1, 4});
        job.maxDeviation = Pick({0, 0, 0, 5, 30, 200}) * kDegree;
        job.deviationIncrement = Pick({0, 2.5, 45}) * kDegree;
        job.grain90 = IsChosen(4);
        job.grain180 = IsChosen(3);
        job.grain270 = IsChosen(6);
        job.singleSided = IsChosen(3);
        job.stackSize = static_cast<int>(m_random.Index(5));
        job.usageRule = static_cast<UsageRule>(m_random.Index(3));
    }

    SheetKind MakeKind(const Job& job)
    {
        SheetKind kind =
            Sheet(Pick({60, 90, 120}), Pick({40, 50, 80}), static_cast<int>(Pick({-1, 0, 1, 1, 2, 5})));
        if (IsChosen(4))
            kind.length = std::numeric_limits<double>::quiet_NaN();
        if (IsChosen(3)) {
            kind.leftTrim = Pick({0, 2});
            kind.rightTrim = Pick({0, 1, 7});
            kind.topTrim = Pick({0, 4});
            kind.bottomTrim = Pick({0, 0.5});
        }
        kind.cost = Pick({0, 1, 5});
        if (IsChosen(4) && !kind.IsRoll())
            kind.outline = MakeOutline(kind);
        const size_t defects = IsChosen(3) ? 1 + m_random.Index(2) : 0;
        for (size_t i = 0; i < defects; ++i)
            kind.defects.push_back(MakeDefect(job, kind));
        return kind;
    }

    Polygon MakeOutline(const SheetKind& kind)
    {
        const double l = kind.length;
        const double w = kind.width;
        switch (m_random.Index(3)) {
        case 0:
            return {{{0, 0}, {l, 0}, {l, w / 2}, {l / 2, w / 2}, {l / 2, w}, {0, w}}};
        case 1:
            return {{{0, 0}, {l, 0}, {l * 0.8, w}, {l * 0.1, w * 0.9}}};
        default:
            return {Rectangle(l, w), Reversed(Rectangle(10, 10, {l / 3, w / 3}))};
        }
    }

    Polygon MakeDefect(const Job& job, const SheetKind& kind)
    {
        const double x = Pick({0, 20, 30 + job.defectSeparation, 55});
        const double y = Pick({0, 10, kind.width - 5});
        if (IsChosen(2))
            return {Rectangle(Pick({1, 6}), Pick({2, 9}), {x, y})};
        return {{{x, y}, {x + 8, y + 1}, {x + 2, y + 6}}};
    }

    /// A size of which one or several fill the usable part of a sheet exactly.
    double PickExact(double whole, double separation)
    {
        const double count = 1 + static_cast<double>(m_random.Index(4));
        return (whole - (count - 1) * separation) / count;
    }

    Item MakeItem(const Job& job)
    {
        Item item;
        item.contours = MakeContours(job);
        const Point shift{Pick({0, -7.25, 300}), Pick({0, 13, -250.5})};
        for (Contour& contour : item.contours)
            Move(contour, shift);
        item.quantity = static_cast<int>(Pick({0, 1, 1, 2, 3, 4, 7}));
        item.priority = static_cast<int>(m_random.Index(3));
        item.orientation = Pick({0, 0, 90, 30, -45, 400}) * kDegree;
        item.grain90 = IsChosen(4);
        item.grain180 = IsChosen(3);
        item.grain270 = IsChosen(6);
        item.maxDeviation = Pick({0, 0, 0, 3, 90}) * kDegree;
        item.deviationIncrement = Pick({0, 0, 1.5}) * kDegree;
        item.mirrored = IsChosen(4);
        item.flippable = IsChosen(3);
        if (IsChosen(5))
            item.allowedAngles = {Pick({0, 45, 90}) * kDegree, Pick({10, 180, 270}) * kDegree};
        return item;
    }

    static void Move(Contour& contour, Point shift)
    {
        contour.start = contour.start + shift;
        for (Segment& segment : contour.segments) {
            segment.end = segment.end + shift;
            segment.centre = segment.centre + shift;
        }
    }

    std::vector<Contour> MakeContours(const Job& job)
    {
        const SheetKind& kind = job.kinds[m_random.Index(job.kinds.size())];
        const double edges = 2 * job.frameWidth;
        const double high = std::max(4.0, kind.width - kind.topTrim - kind.bottomTrim - edges);
        const double wide =
            kind.IsRoll() ? 50 : std::max(4.0, kind.length - kind.leftTrim - kind.rightTrim - edges);
        const double width = PickExact(wide, job.separation);
        const double height = PickExact(high, job.separation);
        switch (m_random.Index(14)) {
        case 0:
        case 1:
        case 2:
            return {MakeContour(Rectangle(width, height))};
        case 3:
            return {MakeContour(Reversed(Rectangle(height, width)))};
        case 4:
            return {MakeContour({{0, 0}, {width, 0}, {width, 5}, {6, 5}, {6, height}, {0, height}})};
        case 5:
            return {RoundContour({}, std::min(width, height) / 2)};
        case 6: // a hole, and an island in it
            return {MakeContour(Rectangle(30, 30)), RoundContour({15, 15}, 12),
                    MakeContour(Rectangle(4, 4, {13, 13}))};
        case 7:
            return {MakeContour(Rectangle(width, height)),
                    MakeContour(Rectangle(width - 2, height - 2, {1, 1}))};
        case 8:
            return {MakeContour(RandomStar(m_random, 3 + m_random.Index(8), Pick({5, 12, 25})))};
        case 9:
            return {MakeContour({{0, 0}, {20, 20}, {20, 0}, {0, 20}})}; // crosses itself
        default:
            return {MakeArcs()};
        }
    }

    Contour MakeArcs()
    {
        Contour contour;
        switch (m_random.Index(4)) {
        case 0: // one full circle
            contour.start = {9, 0};
            contour.segments = {{contour.start, true, IsChosen(2), {}}};
            break;
        case 1: // a slot
            contour.segments = {{{20, 0}, false, true, {}},
                                {{20, 6}, true, true, {20, 3}},
                                {{0, 6}, false, true, {}},
                                {{0, 0}, true, true, {0, 3}}};
            break;
        case 2: // an arc whose end lies off its circle
            contour.segments = {{{20, 0}, false, true, {}},
                                {{10, Pick({14, 10.0005, 9.9995, 6})}, true, true, {10, 0}},
                                {{0, 12}, false, true, {}}};
            break;
        default: // a flat arc, and one that cuts in
            contour.segments = {{{30, 0}, true, true, {15, Pick({20, 1e5, 1e8, 1e14})}},
                                {{30, 12}, true, false, {31, 6}},
                                {{0, 12}, false, true, {}}};
            break;
        }
        return contour;
    }

    Random m_random;
};

enum class End { Stop, Cancel };

/// Runs a job that is stopped or cancelled once it has made a number of moves.
std::optional<Solution> SolveUntil(const Job& job, const RunOptions& options, Control& control,
                                   uint64_t steps, End end)
{
    std::atomic<bool> isDone = false;
    std::jthread watcher([&] {
        while (!isDone && control.steps < steps)
            std::this_thread::yield();
        (end == End::Cancel ? control.cancel : control.stop) = true;
    });
    const std::optional<Solution> solution = Solve(job, options, control);
    isDone = true;
    return solution;
}

bool AreEqual(const Contour& a, const Contour& b)
{
    return a.start == b.start
           && std::equal(a.segments.begin(), a.segments.end(), b.segments.begin(), b.segments.end(),
                         [](const Segment& s, const Segment& t) {
                             return s.end == t.end && s.isArc == t.isArc && s.centre == t.centre
                                    && s.counterClockwise == t.counterClockwise;
                         });
}

/// Whether parts differ in nothing but quantity and priority.
bool AreEqual(const Item& a, const Item& b)
{
    return std::equal(a.contours.begin(), a.contours.end(), b.contours.begin(), b.contours.end(),
                      [](const Contour& c, const Contour& d) { return AreEqual(c, d); })
           && std::tie(a.orientation, a.grain90, a.grain180, a.grain270, a.maxDeviation, a.deviationIncrement,
                       a.mirrored, a.flippable, a.allowedAngles)
                  == std::tie(b.orientation, b.grain90, b.grain180, b.grain270, b.maxDeviation,
                              b.deviationIncrement, b.mirrored, b.flippable, b.allowedAngles);
}

/// Copies of an equal part that count more are placed first.
void ExpectPriorities(const Job& job, const Solution& solution, const std::string& name)
{
    if (job.items.size() < 2)
        return;
    std::vector<int> placed(job.items.size(), 0);
    std::vector<int> left(job.items.size(), 0);
    for (const NestedSheet& sheet : solution.sheets)
        for (const Placement& placement : sheet.placements)
            placed[placement.item] += sheet.stack;
    for (const UnplacedItem& unplaced : solution.unplaced)
        left[unplaced.item] += unplaced.count;
    const size_t twin = job.items.size() - 1;
    for (size_t i = 0; i < twin; ++i) {
        if (!AreEqual(job.items[i], job.items[twin]) || job.items[i].priority == job.items[twin].priority)
            continue;
        const auto [low, high] =
            job.items[i].priority < job.items[twin].priority ? std::pair{i, twin} : std::pair{twin, i};
        EXPECT_TRUE(left[high] == 0 || placed[low] == 0) << name << ": items " << high << " and " << low;
    }
}

void ExpectValid(const Job& job, const Solution& solution, const std::string& name)
{
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>()) << name;
    EXPECT_EQ(SolverOracle::FindFaults(job, solution), std::vector<std::string>()) << name;
    for (const UnplacedItem& unplaced : solution.unplaced)
        EXPECT_NE(unplaced.reason, "its place did not pass the check") << name << ": item " << unplaced.item;
}

/// Returns the number of copies that were placed.
int RunJob(uint64_t seed)
{
    const std::string name = "job " + std::to_string(seed);
    const Job job = JobMaker(seed).Make();
    Random random(seed + 1);
    Control control;
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = 20 + static_cast<double>(random.Index(600));
    options.threads = 1 + static_cast<int>(random.Index(2));
    const size_t way = random.Index(6);
    std::optional<Solution> solution;
    if (way == 0) { // stopped before it begins
        control.stop = true;
        solution = Solve(job, options, control);
    } else if (way <= 2) {
        solution = SolveUntil(job, options, control, random.Index(400), End::Stop);
    } else if (way == 3) {
        solution = SolveUntil(job, options, control, random.Index(400), End::Cancel);
        if (!solution) // cancelled in time
            return 0;
    } else {
        solution = Solve(job, options, control);
    }
    if (!solution.has_value()) {
        ADD_FAILURE() << name;
        return 0;
    }
    EXPECT_EQ(control.progress, 1) << name;
    ExpectValid(job, *solution, name);
    ExpectPriorities(job, *solution, name);
    return CountPlaced(*solution);
}

size_t GetNumber(const char* variable, size_t otherwise)
{
    const char* const text = std::getenv(variable);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

} // namespace

TEST(ZORNestSolverRandomJobsTest, EveryResultIsValid)
{
    const uint64_t first = GetNumber("ZOR_RANDOM_SEED", 1);
    const size_t count = GetNumber("ZOR_RANDOM_JOBS", kJobs);
    size_t placed = 0;
    for (uint64_t seed = first; seed < first + count; ++seed)
        placed += static_cast<size_t>(RunJob(seed));
    EXPECT_GE(placed, count);
}

TEST(ZORNestSolverRandomJobsTest, TheOracleFindsPlantedFaults)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 2)};
    job.items[0].contours.push_back(RoundContour({5, 5}, 3));
    job.kinds = {Sheet(40, 20)};
    job.kinds[0].defects = {{Rectangle(2, 2, {38, 18})}};
    job.separation = 1;
    Solution good;
    good.sheets.resize(1);
    good.sheets[0].usedLength = 40;
    good.sheets[0].placements = {At(0, {0, 0}), At(0, {11, 0})};
    EXPECT_EQ(SolverOracle::FindFaults(job, good).size(), 0U);
    for (const Pose& pose :
         {Pose{false, 0, {10.99, 0}}, Pose{false, 0, {0, 0}}, Pose{true, 0, {25, 0}},
          Pose{false, 0.1, {25, 0}}, Pose{false, 0, {30.001, 0}}, Pose{false, 0, {29, 9}}}) {
        Solution bad = good;
        bad.sheets[0].placements[1].pose = pose;
        EXPECT_EQ(SolverOracle::FindFaults(job, bad).size(), 1U) << pose.position.x;
        EXPECT_EQ(FindFaults(job, bad).size(), 1U) << pose.position.x;
    }
    good.sheets[0].stack = 2;
    EXPECT_GE(SolverOracle::FindFaults(job, good).size(), 3U);
}

} // namespace ZORNestSolver::SolverShapes
