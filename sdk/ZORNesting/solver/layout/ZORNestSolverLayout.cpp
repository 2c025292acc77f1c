#include "ZORNestSolverLayout.h"

#include "solver/base/ZORNestSolverVector.h"

namespace ZORNestSolver {

namespace {

constexpr size_t kBoxPadding = 8;
constexpr float kWeightDecay = 0.95F;
constexpr float kLowestRaise = 1.2F;
constexpr float kHighestRaise = 2.0F;
constexpr float kLargestWeight = 1e15F;

struct FloatBox
{
    float minX, minY, maxX, maxY;
};

/// At least as large; in no time.
FloatBox Widened(const Box& box)
{
    constexpr float kUnit = 0x1p-23F;
    const auto low = [](double value) {
        const float rounded = static_cast<float>(value);
        return rounded - std::abs(rounded) * kUnit;
    };
    const auto high = [](double value) {
        const float rounded = static_cast<float>(value);
        return rounded + std::abs(rounded) * kUnit;
    };
    return {low(box.min.x), low(box.min.y), high(box.max.x), high(box.max.y)};
}

/// Writes the indices of the boxes that overlap the given one and returns their number.
ZOR_VECTOR_CLONES
size_t FindOverlaps(const float* minX, const float* minY, const float* maxX, const float* maxY, size_t count,
                    const FloatBox& box, uint32_t* found)
{
    size_t number = 0;
    for (size_t i = 0; i < count; i += kBoxPadding) {
        const OctetMask mask = (At(minX + i) <= box.maxX) & (At(maxX + i) >= box.minX)
                               & (At(minY + i) <= box.maxY) & (At(maxY + i) >= box.minY);
        if (IsClear(mask))
            continue;
        for (size_t lane = 0; lane < kBoxPadding; ++lane) {
            found[number] = static_cast<uint32_t>(i + lane);
            number += static_cast<size_t>(mask[lane] & 1);
        }
    }
    return number;
}

const Shape& GetBare(const Shape& shape)
{
    return shape.bare.empty() ? shape : shape.bare.front();
}

} // namespace

Layout::Layout(std::shared_ptr<const Problem> problem)
    : m_problem(std::move(problem))
    , m_windows(m_problem->windows)
    , m_stands(m_problem->items.size())
    , m_turned(m_problem->items.size())
{
    const size_t items = m_stands.size();
    const size_t all = items + m_problem->hazards.size();
    m_stride = (all + kBoxPadding - 1) / kBoxPadding * kBoxPadding;
    m_shapes.assign(all, nullptr);
    m_positions.resize(all);
    m_losses.assign(items * m_stride, 0);
    m_weights.assign(items * m_stride, 1);
    constexpr float kFar = std::numeric_limits<float>::infinity();
    m_minX.assign(m_stride, kFar);
    m_minY.assign(m_stride, kFar);
    m_maxX.assign(m_stride, -kFar);
    m_maxY.assign(m_stride, -kFar);
    m_neighbours.resize(m_stride + kBoxPadding);
    for (size_t h = 0; h < m_problem->hazards.size(); ++h) {
        const Hazard& hazard = m_problem->hazards[h];
        const FloatBox box = Widened(hazard.shape.box.Moved(hazard.position));
        const size_t index = items + h;
        m_shapes[index] = &hazard.shape;
        m_positions[index] = hazard.position;
        m_minX[index] = box.minX;
        m_minY[index] = box.minY;
        m_maxX[index] = box.maxX;
        m_maxY[index] = box.maxY;
    }
}

std::span<const uint32_t> Layout::FindNeighbours(const Box& box)
{
    const size_t count = FindOverlaps(m_minX.data(), m_minY.data(), m_maxX.data(), m_maxY.data(), m_stride,
                                      Widened(box), m_neighbours.data());
    return {m_neighbours.data(), count};
}

double Layout::Evaluate(size_t item, const Shape& shape, Point position, double bound)
{
    ++m_evaluations;
    m_pending.clear();
    double total = 0;
    const auto add = [&](size_t other, Point offset) {
        const double weight = static_cast<double>(Weight(item, other));
        const float rest = static_cast<float>((bound - total) / weight);
        total += weight * static_cast<double>(MeasureLoss(shape, *m_shapes[other], offset, rest));
        return total >= bound;
    };
    const Shape& bare = GetBare(shape);
    for (const uint32_t other : FindNeighbours(shape.box.Moved(position))) {
        if (other == item)
            continue;
        const Point offset = m_positions[other] - position;
        if (!DoPolesOverlap(other < m_stands.size() ? shape : bare, *m_shapes[other], offset))
            m_pending.push_back({other, offset});
        else if (add(other, offset))
            return total;
    }
    for (const Pending& pending : m_pending)
        if (m_outlineTest.DoCollide(pending.other < m_stands.size() ? shape : bare, *m_shapes[pending.other],
                                    pending.offset)
            && add(pending.other, pending.offset))
            return total;
    return total;
}

double Layout::GetFreeTravel(size_t item, const Shape& shape, Point position, Axis axis, double most)
{
    if (!(most > 0))
        return 0;
    Box swept = shape.box.Moved(position);
    (axis == Axis::Left ? swept.min.x : swept.min.y) -= most;
    double travel = most;
    for (const uint32_t other : FindNeighbours(swept)) {
        if (other == item)
            continue;
        const Shape& own = other < m_stands.size() ? shape : GetBare(shape);
        travel = MeasureFreeTravel(own, *m_shapes[other], m_positions[other] - position, axis, travel);
    }
    return travel;
}

void Layout::SetStand(size_t item, const Stand& stand)
{
    const ItemType& type = GetType(item);
    const PoseClass& poseClass = type.classes[stand.poseClass];
    if (poseClass.IsContinuous())
        type.Turn(poseClass.mirrored, stand.angle, m_turned[item]);
    m_stands[item] = stand;
    m_positions[item] = stand.position;
    m_shapes[item] = poseClass.IsContinuous() ? &m_turned[item] : &type.shapes[stand.poseClass];
    const FloatBox box = Widened(GetItemBox(item));
    m_minX[item] = box.minX;
    m_minY[item] = box.minY;
    m_maxX[item] = box.maxX;
    m_maxY[item] = box.maxY;
}

float Layout::MeasurePair(size_t item, size_t other)
{
    const Point offset = m_positions[other] - m_positions[item];
    const Shape& a = other < m_stands.size() ? *m_shapes[item] : GetBare(*m_shapes[item]);
    const Shape& b = *m_shapes[other];
    return DoPolesOverlap(a, b, offset) || m_outlineTest.DoCollide(a, b, offset) ? MeasureLoss(a, b, offset)
                                                                                 : 0;
}

void Layout::MeasureItem(size_t item)
{
    const size_t items = GetItemCount();
    std::fill_n(&Loss(item, 0), m_stride, 0.0F);
    for (size_t other = 0; other < items; ++other)
        Loss(other, item) = 0;
    for (const uint32_t other : FindNeighbours(GetItemBox(item))) {
        if (other == item)
            continue;
        const float loss = MeasurePair(item, other);
        Loss(item, other) = loss;
        if (other < items)
            Loss(other, item) = loss;
    }
}

void Layout::Place(size_t item, const Stand& stand)
{
    SetStand(item, stand);
    MeasureItem(item);
}

void Layout::PlaceAll(const std::vector<Stand>& stands)
{
    for (size_t i = 0; i < stands.size(); ++i)
        SetStand(i, stands[i]);
    for (size_t i = 0; i < stands.size(); ++i)
        MeasureItem(i);
}

double Layout::GetItemLoss(size_t item) const
{
    double total = 0;
    for (size_t other = 0; other < m_stride; ++other)
        total += static_cast<double>(Loss(item, other));
    return total;
}

double Layout::GetWeightedItemLoss(size_t item) const
{
    double total = 0;
    for (size_t other = 0; other < m_stride; ++other)
        if (Loss(item, other) > 0)
            total += static_cast<double>(Loss(item, other)) * static_cast<double>(Weight(item, other));
    return total;
}

double Layout::GetTotalLoss() const
{
    const size_t items = GetItemCount();
    double total = 0;
    for (size_t item = 0; item < items; ++item)
        for (size_t other = item + 1; other < m_stride; ++other)
            total += static_cast<double>(Loss(item, other));
    return total;
}

void Layout::UpdateWeights()
{
    float largest = 0;
    for (const float loss : m_losses)
        largest = std::max(largest, loss);
    for (size_t i = 0; i < m_losses.size(); ++i) {
        float& weight = m_weights[i];
        if (m_losses[i] > 0)
            weight =
                std::min(kLargestWeight,
                         weight * (kLowestRaise + (kHighestRaise - kLowestRaise) * m_losses[i] / largest));
        else
            weight = std::max(1.0F, weight * kWeightDecay);
    }
}

void Layout::ResetWeights()
{
    std::fill(m_weights.begin(), m_weights.end(), 1.0F);
}

} // namespace ZORNestSolver
