// Items on sheets while they still may overlap, with the losses of all pairs and their weights.

#pragma once

#include "ZORNestSolverCollision.h"
#include "ZORNestSolverItemType.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace ZORNestSolver {

/// Where an item stands: its reference point and its rotation.
struct Stand
{
    Point position;
    double angle = 0;
    uint32_t poseClass = 0;
    uint32_t window = 0;
};

/// A fixed obstacle: a defect, or what an irregular sheet lacks of its rectangle.
struct Hazard
{
    Shape shape; // relative to its position
    Point position;
};

/// What to search on. The sheets lie side by side in one plane, far enough apart that items on different
/// ones never meet; a window is the part of the plane that the search shapes on one sheet may cover.
struct Problem
{
    std::vector<std::shared_ptr<const ItemType>> types;
    std::vector<size_t> items; // the type of each item
    std::vector<Box> windows;
    std::vector<Hazard> hazards;
};

/// The lower and upper bound of the positions at which a shape lies inside a window; empty if it is too large by
/// more than kFitTolerance.
Box GetRoom(const Box& window, const Shape& shape);

/// The rotations of a family of free angles in which the item fits the window, exactly; ascending.
std::vector<AngleRange> FindFittingAngles(const ItemType& type, uint32_t poseClass, const Box& window);

/// A rotation and hand in which the item fits the window, at the lower left of it; none if there is none, free angles
/// included. Of free angles, the one nearest to the middle.
std::optional<Stand> FindFitting(const ItemType& type, const Box& window);

/// Checks whether the item fits the window at the middle of one of its families; much quicker.
bool FitsAtMiddle(const ItemType& type, const Box& window);

/// Keeps boxes, losses and weights of all pairs up to date. Every standing item lies inside its window.
class Layout
{
public:
    explicit Layout(std::shared_ptr<const Problem> problem);
    Layout(const Layout&) = delete; // shapes of turned items are pointed to
    Layout& operator=(const Layout&) = delete;

    size_t GetItemCount() const { return m_stands.size(); }
    const Problem& GetProblem() const { return *m_problem; }
    const ItemType& GetType(size_t item) const { return *m_problem->types[m_problem->items[item]]; }
    const Box& GetWindow(size_t window) const { return m_windows[window]; }
    const std::vector<Box>& GetWindows() const { return m_windows; }
    /// Standing items are moved by the caller afterwards.
    void SetWindow(size_t window, const Box& box) { m_windows[window] = box; }

    const Stand& GetStand(size_t item) const { return m_stands[item]; }
    const std::vector<Stand>& GetStands() const { return m_stands; }
    const Shape& GetShape(size_t item) const { return *m_shapes[item]; }
    Box GetItemBox(size_t item) const { return m_shapes[item]->box.Moved(m_stands[item].position); }

    /// What has to lie inside the window.
    Box GetItemExtent(size_t item) const { return m_shapes[item]->extent.Moved(m_stands[item].position); }

    bool IsStanding(size_t item) const { return m_shapes[item] != nullptr; }
    /// Puts the item there and measures its losses anew.
    void Place(size_t item, const Stand& stand);
    /// Puts all items there, more quickly than one by one.
    void PlaceAll(const std::vector<Stand>& stands);

    /// The weighted loss of the item if it stood there with this shape; as soon as it reaches \a bound, some
    /// value not below it.
    double Evaluate(size_t item, const Shape& shape, Point position, double bound);

    /// Returns how far a free item may move along the axis until it touches another one, or a hazard; \a most at most.
    double GetFreeTravel(size_t item, const Shape& shape, Point position, Axis axis, double most);

    double GetItemLoss(size_t item) const;
    double GetWeightedItemLoss(size_t item) const;
    double GetTotalLoss() const;

    /// Raises the weights of colliding pairs, the worst ones most, and lets the others decay.
    void UpdateWeights();
    void ResetWeights();

    uint64_t GetEvaluationCount() const { return m_evaluations; }

private:
    struct Pending
    {
        size_t other;
        Point offset;
    };
    std::span<const uint32_t> FindNeighbours(const Box& box);
    void SetStand(size_t item, const Stand& stand);
    void MeasureItem(size_t item);
    float MeasurePair(size_t item, size_t other);
    float& Loss(size_t item, size_t other) { return m_losses[item * m_stride + other]; }
    float Loss(size_t item, size_t other) const { return m_losses[item * m_stride + other]; }
    float Weight(size_t item, size_t other) const { return m_weights[item * m_stride + other]; }

    std::shared_ptr<const Problem> m_problem;
    std::vector<Box> m_windows;
    std::vector<Stand> m_stands;
    std::vector<Shape> m_turned;        // of items at a free angle
    std::vector<const Shape*> m_shapes; // items, then hazards; null while off the sheets
    std::vector<Point> m_positions;     // items, then hazards
    size_t m_stride = 0;
    std::vector<float> m_losses;
    std::vector<float> m_weights;
    std::vector<float> m_minX, m_minY, m_maxX, m_maxY; // boxes rounded outwards
    std::vector<uint32_t> m_neighbours;
    std::vector<Pending> m_pending;
    OutlineTest m_outlineTest;
    uint64_t m_evaluations = 0;
};

} // namespace ZORNestSolver
