// The order and the care with which a construction places items.

#pragma once

namespace ZORNestSolver {

/// The order in which items claim their places.
enum class Claims { BySize, ByPriority };

/// How thoroughly a place is searched: contacts take microseconds, samples a fraction of a millisecond.
enum class Placing { Contacts, Samples };

/// What a construction prefers. An unturned row may waste what a turned one needs, and the largest item what
/// several smaller ones fill.
struct Preference
{
    enum class Turn { Any, Narrow, Flat, Random }; // rotations that are tried before all others
    enum class Order { LargeFirst, LargestLast, Random };

    Turn turn = Turn::Any;
    Order order = Order::LargeFirst;
    bool isLow = false; // ends low rather than left
};

} // namespace ZORNestSolver
