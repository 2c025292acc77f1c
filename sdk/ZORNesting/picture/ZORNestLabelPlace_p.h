// Finds the place of a label on an area.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <QList>

#include <optional>
#include <vector>

/// The room that labels have in an area: within its outlines, outside of its holes, off what is drawn on it.
///
/// A grid of 64 x 32 cells over the area tells what is free, so that a place is found in a time that depends
/// on the area's corners only once. The same area gives the
/// same place.
class ZORNestLabelPlace
{
public:
    struct Place
    {
        ZORMathPoint center;
        double scale = 1; // of the size that was asked for
    };

    /// \param box       what the grid covers; of any extent
    /// \param outlines  closed by an edge from the last point to the first; even-odd; heights are ignored
    /// \param marks     chains that labels keep off
    ZORNestLabelPlace(const ZORMathBoundingBox& box, const QList<ZORMathSetOfPoints>& outlines,
                      const QList<ZORMathSetOfPoints>& marks);

    /// The place nearest to \a wanted of the largest label with these proportions, from \a width x \a height
    /// down to a third of it.
    /// \return empty when there is none
    std::optional<Place> Find(const ZORMathPoint& wanted, double width, double height) const;

private:
    static constexpr int kColumns = 64;
    static constexpr int kRows = 32;

    /// In cells, from the lower left corner of the box.
    struct GridPoint
    {
        double x;
        double y;
    };

    GridPoint ToGrid(const ZORMathPoint& point) const;
    ZORMathPoint FromGrid(const GridPoint& point, double z) const;
    void Toggle(const GridPoint& from, const GridPoint& to);
    void Block(const GridPoint& from, const GridPoint& to);
    void Count();
    bool IsFree(int column, int row, int numColumns, int numRows) const;
    bool IsFreeAround(const GridPoint& center, double width, double height) const;
    std::optional<GridPoint> FindNearest(const GridPoint& wanted, double width, double height) const;

    const ZORMathPoint m_corner;
    const double m_cellWidth;
    const double m_cellHeight;
    std::vector<char> m_isInside; // row by row; while it is made: whether the next cell is on the other side
    std::vector<char> m_isBlocked;
    std::vector<int> m_numFree; // of the cells below and left of a corner, of (rows + 1) x (columns + 1)
};
