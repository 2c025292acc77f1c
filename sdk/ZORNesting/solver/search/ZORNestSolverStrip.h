// The shortest layout on a sheet that is open to the right.

#pragma once

#include "ZORNestSolverSeparator.h"

#include <functional>
#include <optional>

namespace ZORNestSolver {

/// A pose of an item and the length of its extent in it.
struct ShortestPose
{
    size_t poseClass = 0;
    double angle = 0;
    double length = 0;
};

/// Returns the pose in which the item is shortest along x, among those that fit the height of the window; nothing if
/// there is none. The length is that of the exact outline and the separation.
std::optional<ShortestPose> FindShortest(const ItemType& type, const Box& window);

/// Shrinks a strip as far as its items can be separated. The strip is the only window of the problem; its
/// right end is free.
class StripSearch
{
public:
    /// Receives every layout that is shorter than the one before; refuses it by returning false.
    using Listener = std::function<bool(const std::vector<Stand>& stands, double length)>;

    StripSearch(std::shared_ptr<const Problem> problem, uint64_t seed, Listener listener);

    /// Places the items one after another; where the run is over, simply behind each other. Every item fits
    /// the width in one of its rotations and hands.
    void Construct(const Budget& budget);
    /// Goes on from a valid layout instead of its own.
    void Continue(const std::vector<Stand>& stands);
    /// Shrinks in steps that become smaller where separation fails and larger where it succeeds; at the smallest
    /// one, leaves dead ends by exchanging large items.
    void Explore(const Budget& budget);
    /// Shrinks the best layout in small steps.
    void Compress(const Budget& budget);

    double GetLength() const { return m_length; }
    const std::vector<Stand>& GetStands() const { return m_best; }
    uint64_t GetEvaluationCount() const { return m_layout.GetEvaluationCount(); }

private:
    struct DeadEnd
    {
        double loss = 0;
        std::vector<Stand> stands;
    };

    void SetLength(double length);
    void ShrinkTo(double length);
    void PlaceInRow();
    Stand FindBehind(size_t item, double line) const;
    void RestoreBest();
    void ClampItems();
    Shape Shorten(size_t item, Stand& stand) const;
    bool KeepAsBest();
    SeparationLimits GetExploreLimits() const;
    void LeaveDeadEnd(double loss);
    std::vector<size_t> GetLargeItems() const;
    void ExchangeLargeItems();
    double GetShortestLength() const;
    bool CanShrink() const { return m_length > m_shortest * (1 + 1e-9); }

    Random m_random;
    Layout m_layout;
    Mover m_mover;
    Separator m_separator;
    Listener m_listener;
    double m_length = 0;
    double m_shortest = 0;
    double m_exploreStep = 0; // the next shrinkage, as a share of the length
    std::vector<Stand> m_best;
    std::vector<DeadEnd> m_deadEnds; // at the present length, ascending by loss
};

} // namespace ZORNestSolver
