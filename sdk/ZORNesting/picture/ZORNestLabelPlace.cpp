#include "ZORNestLabelPlace_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kSmallestScale = 1.0 / 3;
constexpr double kShrinking = 0.8; // from one size that is tried to the next

// Boxes without extent, and those whose extent is no number, have cells of some size all the same.
double CellSize(double from, double to, int count)
{
    const double size = (to - from) / count;
    return size > 0 && std::isfinite(size) ? size : 1;
}

// What lies farther off counts as lying there: differences of huge numbers may be infinite, or be none.
double ToCells(double length, double cellSize)
{
    constexpr double kFarthest = 1e6;
    const double cells = length / cellSize;
    return std::isnan(cells) ? kFarthest : std::clamp(cells, -kFarthest, kFarthest);
}

} // namespace

ZORNestLabelPlace::ZORNestLabelPlace(const ZORMathBoundingBox& box, const QList<ZORMathSetOfPoints>& outlines,
                                     const QList<ZORMathSetOfPoints>& marks)
    : m_corner(box.GetLowerPoint())
    , m_cellWidth(CellSize(m_corner.GetX(), box.GetUpperPoint().GetX(), kColumns))
    , m_cellHeight(CellSize(m_corner.GetY(), box.GetUpperPoint().GetY(), kRows))
    , m_isInside(size_t(kColumns * kRows), 0)
    , m_isBlocked(size_t(kColumns * kRows), 0)
    , m_numFree(size_t((kColumns + 1) * (kRows + 1)), 0)
{
    for (const ZORMathSetOfPoints& outline : outlines) {
        if (outline.isEmpty())
            continue;
        GridPoint last = ToGrid(outline.constLast());
        for (const ZORMathPoint& point : outline) {
            const GridPoint next = ToGrid(point);
            Toggle(last, next);
            Block(last, next);
            last = next;
        }
    }
    for (const ZORMathSetOfPoints& mark : marks) {
        for (qsizetype i = 1; i < mark.size(); ++i)
            Block(ToGrid(mark[i - 1]), ToGrid(mark[i]));
    }
    Count();
}

ZORNestLabelPlace::GridPoint ZORNestLabelPlace::ToGrid(const ZORMathPoint& point) const
{
    return {ToCells(point.GetX() - m_corner.GetX(), m_cellWidth),
            ToCells(point.GetY() - m_corner.GetY(), m_cellHeight)};
}

ZORMathPoint ZORNestLabelPlace::FromGrid(const GridPoint& point, double z) const
{
    return {m_corner.GetX() + point.x * m_cellWidth, m_corner.GetY() + point.y * m_cellHeight, z};
}

// In every row whose middle the edge crosses, the cells to the right of it change sides.
void ZORNestLabelPlace::Toggle(const GridPoint& from, const GridPoint& to)
{
    const GridPoint& low = from.y < to.y ? from : to;
    const GridPoint& high = from.y < to.y ? to : from;
    const int first = int(std::ceil(std::clamp(low.y - 0.5, 0.0, double(kRows))));
    const int end = int(std::ceil(std::clamp(high.y - 0.5, 0.0, double(kRows))));
    for (int row = first; row < end; ++row) {
        const double x = low.x + (high.x - low.x) * (row + 0.5 - low.y) / (high.y - low.y);
        const int column = int(std::ceil(std::clamp(x - 0.5, 0.0, double(kColumns))));
        if (column < kColumns)
            m_isInside[size_t(row * kColumns + column)] ^= 1;
    }
}

// Steps of half a cell: what they miss are corners of cells.
void ZORNestLabelPlace::Block(const GridPoint& from, const GridPoint& to)
{
    // What is drawn beyond the box may be far away.
    constexpr double kFarthest = 4 * kColumns;
    const double length = std::min(std::max(std::abs(to.x - from.x), std::abs(to.y - from.y)), kFarthest);
    const int steps = int(2 * length) + 1;
    for (int i = 0; i <= steps; ++i) {
        const double t = double(i) / steps;
        const double x = std::clamp(from.x + (to.x - from.x) * t, -1.0, kColumns + 1.0);
        const double y = std::clamp(from.y + (to.y - from.y) * t, -1.0, kRows + 1.0);
        const int column = int(std::floor(x));
        const int row = int(std::floor(y));
        if (column >= 0 && column < kColumns && row >= 0 && row < kRows)
            m_isBlocked[size_t(row * kColumns + column)] = 1;
    }
}

void ZORNestLabelPlace::Count()
{
    for (int row = 0; row < kRows; ++row) {
        char isInside = 0;
        int numFreeInRow = 0;
        for (int column = 0; column < kColumns; ++column) {
            const auto cell = size_t(row * kColumns + column);
            isInside = char(isInside ^ m_isInside[cell]);
            numFreeInRow += isInside && !m_isBlocked[cell] ? 1 : 0;
            m_numFree[size_t((row + 1) * (kColumns + 1) + column + 1)] =
                m_numFree[size_t(row * (kColumns + 1) + column + 1)] + numFreeInRow;
        }
    }
}

bool ZORNestLabelPlace::IsFree(int column, int row, int numColumns, int numRows) const
{
    if (column < 0 || row < 0 || column + numColumns > kColumns || row + numRows > kRows)
        return false;
    const auto numFree = [this](int x, int y) { return m_numFree[size_t(y * (kColumns + 1) + x)]; };
    const int count = numFree(column + numColumns, row + numRows) - numFree(column, row + numRows)
                      - numFree(column + numColumns, row) + numFree(column, row);
    return count == numColumns * numRows;
}

bool ZORNestLabelPlace::IsFreeAround(const GridPoint& center, double width, double height) const
{
    // Also keeps what is far outside from the numbers of cells.
    if (!(center.x >= 0 && center.x <= kColumns && center.y >= 0 && center.y <= kRows))
        return false;
    const int column = int(std::floor(center.x - width / 2));
    const int row = int(std::floor(center.y - height / 2));
    return IsFree(column, row, int(std::ceil(center.x + width / 2)) - column,
                  int(std::ceil(center.y + height / 2)) - row);
}

std::optional<ZORNestLabelPlace::GridPoint> ZORNestLabelPlace::FindNearest(const GridPoint& wanted,
                                                                           double width, double height) const
{
    if (IsFreeAround(wanted, width, height))
        return wanted;
    const int numColumns = int(std::ceil(width));
    const int numRows = int(std::ceil(height));
    std::optional<GridPoint> found;
    double least = std::numeric_limits<double>::infinity();
    for (int row = 0; row + numRows <= kRows; ++row) {
        for (int column = 0; column + numColumns <= kColumns; ++column) {
            const GridPoint center{column + numColumns / 2.0, row + numRows / 2.0};
            const double across = (center.x - wanted.x) * m_cellWidth;
            const double up = (center.y - wanted.y) * m_cellHeight;
            const double distance = across * across + up * up; // squared
            if (distance < least && IsFree(column, row, numColumns, numRows)) {
                least = distance;
                found = center;
            }
        }
    }
    return found;
}

std::optional<ZORNestLabelPlace::Place> ZORNestLabelPlace::Find(const ZORMathPoint& wanted, double width,
                                                                double height) const
{
    const GridPoint center = ToGrid(wanted);
    const double cellsAcross = width / m_cellWidth;
    const double cellsUp = height / m_cellHeight;
    if (!(cellsAcross > 0 && cellsAcross <= kColumns && cellsUp > 0 && cellsUp <= kRows))
        return {};
    for (double scale = 1; scale >= kSmallestScale; scale *= kShrinking) {
        if (const std::optional<GridPoint> found = FindNearest(center, cellsAcross * scale, cellsUp * scale))
            return Place{FromGrid(*found, wanted.GetZ()), scale};
    }
    return {};
}
