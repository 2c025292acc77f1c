#include "ZORNestSolverSpatialOrder.h"

#include <cstdint>
#include <numeric>

namespace ZORNestSolver {

namespace {

constexpr double kCells = 65535; // of the grid in each direction; one less than a power of two

/// Returns the cell of a value between two limits; 0 where that cannot be computed.
uint32_t GetCell(double value, double low, double high)
{
    const double share = (value - low) / (high - low);
    return share > 0 ? static_cast<uint32_t>(std::min(share, 1.0) * kCells) : 0;
}

/// Puts a zero before each of 16 bits.
uint32_t Spread(uint32_t bits)
{
    bits = (bits | (bits << 8)) & 0x00FF00FF;
    bits = (bits | (bits << 4)) & 0x0F0F0F0F;
    bits = (bits | (bits << 2)) & 0x33333333;
    return (bits | (bits << 1)) & 0x55555555;
}

} // namespace

std::vector<size_t> GetSpatialOrder(const std::vector<Box>& boxes)
{
    Box around;
    for (const Box& box : boxes)
        around.Add(box.GetCentre());
    std::vector<uint32_t> keys;
    keys.reserve(boxes.size());
    for (const Box& box : boxes) {
        const Point center = box.GetCentre();
        keys.push_back(Spread(GetCell(center.x, around.min.x, around.max.x))
                       | (Spread(GetCell(center.y, around.min.y, around.max.y)) << 1));
    }
    std::vector<size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [&keys](size_t a, size_t b) { return keys[a] < keys[b]; });
    return order;
}

} // namespace ZORNestSolver
