// Items on sheets while they still may overlap, with the losses of all pairs and their weights.

#pragma once

#include "ZORNestSolverCollision.h"
#include "ZORNestSolverProblem.h"

#include <cstdint>
#include <memory>
#include <span>

namespace ZORNestSolver {

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
