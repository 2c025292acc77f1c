// Any job gives a solution that passes the check.

#include "FuzzTarget.h"
#include "SolverProof.h"

#include <array>
#include <cstring>
#include <limits>
#include <numbers>

namespace ZORNestSolver {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr size_t kMostItems = 4;
constexpr size_t kMostContours = 4;
constexpr size_t kMostSegments = 24;
constexpr int kMostMoves = 50;

constexpr std::array kOddNumbers{0.0,
                                 -0.0,
                                 1e-310,
                                 -5e-324,
                                 1e-9,
                                 1e-6,
                                 1.0 / 3,
                                 1e5,
                                 1e9,
                                 -1e9,
                                 1e15,
                                 1e300,
                                 std::numeric_limits<double>::max(),
                                 std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()};

/// Makes a job of bytes: equal bytes give equal jobs, and every job of a modest size has bytes. Behind the end all
/// bytes are 0.
class JobReader
{
public:
    JobReader(const uint8_t* data, size_t size)
        : m_data(data)
        , m_end(data + size)
    {
    }

    Job Read()
    {
        Job job;
        job.seed = Take<uint8_t>();
        ReadRules(job);
        for (size_t kinds = 1 + Below(3); kinds > 0; --kinds)
            job.kinds.push_back(ReadKind());
        for (size_t items = 1 + Below(kMostItems); items > 0; --items)
            job.items.push_back(ReadItem());
        return job;
    }
    int ReadMoves() { return static_cast<int>(Below(kMostMoves)); }
    bool ReadFlag() { return Below(2) == 1; }

private:
    template<class T>
    T Take()
    {
        T value{};
        const size_t size = std::min(sizeof value, static_cast<size_t>(m_end - m_data));
        if (size > 0)
            std::memcpy(&value, m_data, size);
        m_data += size;
        return value;
    }
    size_t Below(size_t limit) { return Take<uint8_t>() % limit; }
    bool IsChosen(size_t oneIn) { return Below(oneIn) == oneIn - 1; }

    /// Whole numbers mostly, as exact fits are where faults are.
    double Number()
    {
        switch (Below(16)) {
        case 15:
            return Take<double>();
        case 14:
            return kOddNumbers[Below(kOddNumbers.size())];
        case 13:
            return Take<int16_t>() / 64.0;
        default:
            return Take<int8_t>();
        }
    }
    int Count() { return IsChosen(8) ? Take<int>() : static_cast<int>(Below(8)); }
    Point ReadPoint()
    {
        const double x = Number();
        return {x, Number()};
    }
    Polygon ReadPolygon()
    {
        Polygon polygon(1 + Below(2));
        for (Ring& ring : polygon)
            for (size_t points = Below(8); points > 0; --points)
                ring.push_back(ReadPoint());
        return polygon;
    }

    void ReadRules(Job& job)
    {
        const auto rare = [this](double unit) { return IsChosen(4) ? Number() * unit : 0; };
        job.separation = rare(1);
        job.frameWidth = rare(1);
        job.defectSeparation = rare(1);
        job.maxDeviation = rare(kDegree);
        job.deviationIncrement = rare(kDegree);
        job.grain90 = IsChosen(4);
        job.grain180 = IsChosen(4);
        job.grain270 = IsChosen(4);
        job.singleSided = IsChosen(4);
        job.stackSize = IsChosen(4) ? Count() : 1;
        job.usageRule = static_cast<UsageRule>(Below(3));
    }

    SheetKind ReadKind()
    {
        SheetKind kind;
        kind.name = "sheet";
        kind.quantity = Count();
        kind.width = Number();
        kind.length = Number();
        if (IsChosen(4))
            kind.length = std::numeric_limits<double>::quiet_NaN();
        if (IsChosen(4))
            for (double* trim : {&kind.leftTrim, &kind.rightTrim, &kind.topTrim, &kind.bottomTrim})
                *trim = Number();
        if (IsChosen(4))
            kind.cost = Number();
        if (IsChosen(8))
            kind.outline = ReadPolygon();
        for (size_t defects = IsChosen(4) ? Below(3) : 0; defects > 0; --defects)
            kind.defects.push_back(ReadPolygon());
        return kind;
    }

    Item ReadItem()
    {
        Item item;
        item.name = "part";
        item.quantity = Count();
        for (size_t contours = 1 + Below(kMostContours); contours > 0; --contours)
            item.contours.push_back(ReadContour());
        if (IsChosen(4))
            ReadTurns(item);
        return item;
    }

    void ReadTurns(Item& item)
    {
        item.priority = IsChosen(4) ? Take<int>() : static_cast<int>(Below(3));
        item.orientation = Number() * kDegree;
        item.grain90 = ReadFlag();
        item.grain180 = ReadFlag();
        item.grain270 = ReadFlag();
        item.maxDeviation = Number() * kDegree;
        item.deviationIncrement = Number() * kDegree;
        item.mirrored = ReadFlag();
        item.flippable = ReadFlag();
        for (size_t angles = Below(4); angles > 0; --angles)
            item.allowedAngles.push_back(Number() * kDegree);
    }

    Contour ReadContour()
    {
        if (IsChosen(2)) { // a rectangle, which chance seldom makes
            const Point size = ReadPoint();
            return MakeContour({{0, 0}, {size.x, 0}, {size.x, size.y}, {0, size.y}});
        }
        Contour contour;
        contour.start = ReadPoint();
        for (size_t segments = Below(kMostSegments); segments > 0; --segments) {
            Segment segment;
            segment.end = ReadPoint();
            segment.isArc = IsChosen(3);
            if (segment.isArc) {
                segment.counterClockwise = ReadFlag();
                segment.centre = ReadPoint();
            }
            contour.segments.push_back(segment);
        }
        return contour;
    }

    const uint8_t* m_data;
    const uint8_t* m_end;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    JobReader reader(data, size);
    const int moves = reader.ReadMoves();
    const auto start = reader.ReadFlag() ? FuzzSolver::Start::Stopped : FuzzSolver::Start::Normal;
    FuzzSolver::SolveAndProve(reader.Read(), moves, start);
    return 0;
}

} // namespace ZORNestSolver
