// What a layout holds: items, the windows that they have to lie in, and the obstacles between them.

#pragma once

#include "ZORNestSolverItemType.h"

#include <cstdint>
#include <memory>
#include <optional>

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

} // namespace ZORNestSolver
