// A sheet that is filled with one item after another.

#pragma once

#include "ZORNestSolverContactPoses.h"
#include "solver/search/ZORNestSolverMover.h"

#include <span>

namespace ZORNestSolver {

/// Which of the contacts of an item is taken.
struct Leaning
{
    bool isLow = false;         // the one that ends lowest rather than furthest left
    std::optional<size_t> pose; // of the item's contact poses, as long as it finds room; otherwise any
    size_t mostPoses = std::numeric_limits<size_t>::max(); // that are tried
};

/// Puts items where they touch others, or where random samples find more room. Contacts keep the separation
/// exactly, so that rows without slack fit. Memory: 8 bytes for each pair of items while samples are taken.
class OpenSheet
{
public:
    OpenSheet(const PreparedJob& prepared, ContactPoses& poses, size_t kind, int stack, uint64_t seed);

    size_t GetKind() const { return m_kind; }
    int GetStack() const { return m_stack; }
    /// Whether room for the item is still possible: an equal one was not refused before, and its area is left.
    bool IsWorthTrying(size_t item) const;
    /// Places the item where it ends furthest left, or where it leans to. With \a samples 0 only contacts are
    /// tried, which takes microseconds.
    bool TryPlace(size_t item, int samples, const Leaning& leaning);

    /// Places the item above the last one that was placed so, or else in a new column right of all items. Searches
    /// nothing, and leaves free what lies beside the boxes of items and obstacles.
    bool TryPlaceInColumn(size_t item);

    /// Area of the items on the sheet.
    double GetFilledArea() const { return m_filled; }
    std::vector<Placement> GetPlacements() const;

private:
    std::optional<Stand> FindContact(size_t item, const Leaning& leaning);
    std::optional<Stand> FindContact(size_t item, std::span<const ContactPose> poses, bool isLow) const;
    std::optional<Stand> FindCornerPlace(size_t item);
    std::optional<Stand> FindSample(size_t item, int samples);
    Point GetColumnAfterAll() const;
    std::optional<Box> FindInColumn(const Box& outline, Point low) const;
    bool IsFree(size_t item, const ContactPose& pose, const Box& box) const;
    bool ClearsObstacles(size_t item, const ContactPose& pose, const Box& box) const;
    bool IsInside(const Box& box) const;
    double GetEnd(const Box& box, bool isLow) const;
    Box GetOutlineBox(size_t item, const Stand& stand) const;
    void AddCorner(Point corner);
    void AddCorners(const Box& box, double distance);
    void Place(size_t item, const Stand& stand);
    void Reserve(size_t count);

    const PreparedJob& m_prepared;
    ContactPoses& m_poses;
    size_t m_kind;
    int m_stack;
    const SheetArea& m_area;
    Random m_random;
    Box m_usable;
    double m_filled = 0;
    std::vector<size_t> m_items;
    std::vector<Stand> m_stands;
    std::vector<Box> m_boxes;      // of the outlines
    std::vector<Point> m_corners;  // lower left corners that the box of a further outline may take
    std::vector<bool> m_isRefused; // by item
    std::optional<Point> m_column; // lower left corner of the next item in a column; until others are placed
    std::shared_ptr<Problem> m_problem;
    std::unique_ptr<Layout> m_layout; // once samples are taken
};

} // namespace ZORNestSolver
