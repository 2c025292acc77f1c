#include "ZORNestSolverPairTable.h"

namespace ZORNestSolver {

namespace {

constexpr size_t MostShapes = 1000;
constexpr uint8_t Patience = 3; // questions about a cell that are not worth settling it
constexpr uint8_t FirstAnswer = 16;

double GetSquaredDistance(Point p, Point a, Point along, double inverse)
{
    const Point arm = p - a;
    const double t = std::min(1.0, std::max(0.0, Dot(arm, along) * inverse));
    const Point rest = arm - along * t;
    return Dot(rest, rest);
}

/// Edges that do not cross come nearer to each other than the distance.
bool AreEdgesNear(Point a1, Point a2, Point b1, Point b2, double squaredDistance)
{
    const Point a = a2 - a1;
    const Point b = b2 - b1;
    const double inverseA = 1 / std::max(Dot(a, a), std::numeric_limits<double>::min());
    const double inverseB = 1 / std::max(Dot(b, b), std::numeric_limits<double>::min());
    return GetSquaredDistance(b1, a1, a, inverseA) <= squaredDistance
           || GetSquaredDistance(b2, a1, a, inverseA) <= squaredDistance
           || GetSquaredDistance(a1, b1, b, inverseB) <= squaredDistance
           || GetSquaredDistance(a2, b1, b, inverseB) <= squaredDistance;
}

Box GetEdgeBox(const Shape& shape, size_t edge, Point offset)
{
    Box box;
    box.Add(Point{shape.ax[edge], shape.ay[edge]} + offset);
    box.Add(Point{shape.bx[edge], shape.by[edge]} + offset);
    return box;
}

/// Shapes that do not collide come nearer to each other than the distance.
bool AreNear(const Shape& a, const Shape& b, Point offset, double distance)
{
    const Box boxB = b.box.Moved(offset).Grown(distance);
    const Box boxA = a.box.Grown(distance);
    for (size_t i = 0; i < a.edgeCount; ++i) {
        const Box reach = GetEdgeBox(a, i, {}).Grown(distance);
        if (!reach.Overlaps(boxB))
            continue;
        for (size_t k = 0; k < b.edgeCount; ++k) {
            const Box other = GetEdgeBox(b, k, offset);
            if (other.Overlaps(boxA) && other.Overlaps(reach)
                && AreEdgesNear({a.ax[i], a.ay[i]}, {a.bx[i], a.by[i]}, Point{b.ax[k], b.ay[k]} + offset,
                                Point{b.bx[k], b.by[k]} + offset, distance * distance))
                return true;
        }
    }
    return false;
}

} // namespace

PairTables::PairTables(size_t shapes)
    : m_shapes(shapes <= MostShapes ? shapes : 0)
    , m_tables(m_shapes * m_shapes)
{
}

std::unique_ptr<PairTables::Table> PairTables::MakeTable(const Shape& a, const Shape& b)
{
    auto table = std::make_unique<Table>();
    table->origin = a.box.min - b.box.max;
    const Point size = a.box.max - b.box.min - table->origin;
    table->cell = size * (1.0 / Cells);
    table->inverse = {1 / table->cell.x, 1 / table->cell.y};
    table->states.assign(Cells * Cells, 0);
    table->losses.assign((Cells + 1) * (Cells + 1), std::numeric_limits<float>::quiet_NaN());
    return table;
}

PairTables::Answer PairTables::Settle(const Table& table, const Shape& a, const Shape& b, int column, int row)
{
    const Point centre = table.origin + Point{table.cell.x * (column + 0.5), table.cell.y * (row + 0.5)};
    const double reach = Length(table.cell) / 2 * (1 + 1e-6); // a little more than to the corners
    const PoleOverlap overlap = MeasurePoles(a, b, centre);
    if (static_cast<double>(overlap.depth) > reach * (1 + 1e-4))
        return Answer::Colliding;
    if (overlap.certain || m_outlineTest.DoCollide(a, b, centre) || AreNear(a, b, centre, reach))
        return Answer::Unsure;
    return Answer::Apart;
}

float PairTables::GetLoss(Table& table, const Shape& a, const Shape& b, int column, int row)
{
    float& loss = table.losses[static_cast<size_t>(row * (Cells + 1) + column)];
    if (std::isnan(loss))
        loss = MeasurePoles(a, b, table.origin + Point{table.cell.x * column, table.cell.y * row}).loss;
    return loss;
}

float PairTables::Interpolate(Table& table, const Shape& a, const Shape& b, Point place, int column, int row)
{
    const float x = static_cast<float>(place.x - column);
    const float y = static_cast<float>(place.y - row);
    const float low = GetLoss(table, a, b, column, row) * (1 - x) + GetLoss(table, a, b, column + 1, row) * x;
    const float high =
        GetLoss(table, a, b, column, row + 1) * (1 - x) + GetLoss(table, a, b, column + 1, row + 1) * x;
    return low * (1 - y) + high * y;
}

PairTables::Verdict PairTables::Look(uint32_t a, const Shape& shapeA, uint32_t b, const Shape& shapeB,
                                     Point offset)
{
    if (a == NoShape || b == NoShape || m_shapes == 0)
        return {};
    if (a > b)
        return Look(b, shapeB, a, shapeA, Point{} - offset);
    std::unique_ptr<Table>& table = m_tables[a * m_shapes + b];
    if (!table)
        table = MakeTable(shapeA, shapeB);
    const Point place{(offset.x - table->origin.x) * table->inverse.x,
                      (offset.y - table->origin.y) * table->inverse.y};
    const int column = std::clamp(static_cast<int>(place.x), 0, Cells - 1);
    const int row = std::clamp(static_cast<int>(place.y), 0, Cells - 1);
    uint8_t& state = table->states[static_cast<size_t>(row * Cells + column)];
    if (state < Patience) {
        ++state;
        return {};
    }
    if (state < FirstAnswer)
        state =
            static_cast<uint8_t>(FirstAnswer + static_cast<int>(Settle(*table, shapeA, shapeB, column, row)));
    const auto answer = static_cast<Answer>(state - FirstAnswer);
    if (answer == Answer::Apart)
        return {answer, 0};
    return {answer, Interpolate(*table, shapeA, shapeB, place, column, row)};
}

} // namespace ZORNestSolver
