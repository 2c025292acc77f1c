// Items prepared for the search.

#pragma once

#include "ZORNestSolverShape.h"
#include "solver/base/ZORNestSolverInterruption.h"
#include "solver/geometry/ZORNestSolverPose.h"
#include "solver/model/ZORNestSolverJob.h"
#include "solver/model/ZORNestSolverSilhouette.h"

namespace ZORNestSolver {

/// A family of allowed rotations: every angle within `deviation` of `angle`.
struct PoseClass
{
    bool mirrored = false;
    double angle = 0;
    double deviation = 0;

    bool IsContinuous() const { return deviation > 0; }
    /// Returns whether the hand and, up to rounding, the angle of a pose belong to the family.
    bool Allows(const Pose& pose) const;
};

/// Returns the rotations and hands that the job allows for an item, without repetitions; never empty.
///
/// The hand that is asked for, mirrored or not, takes the orientation and the quarter turns from it that the
/// grain allows, and the deviations around them. The other hand of a flippable item takes the negative
/// rotations, so that its grain lies along the sheet's. Angles that are listed instead hold for both hands.
std::vector<PoseClass> GetPoseClasses(const Item& item, const Job& job);

/// What all copies of an item share.
struct ItemType
{
    Polygon outer; // contains the outline, in the item's coordinates
    Polygon body;  // outer grown by half the separation and simplified, relative to the reference point
    Silhouette silhouette;         // of the exact outline, in the item's coordinates
    double margin = 0;             // half the separation
    Point reference;               // in the item's coordinates, deep inside
    Shape base;                    // neither mirrored nor turned
    std::vector<size_t> holeRings; // the rings of the body that are holes
    std::vector<Circle> holes;     // the largest circle in each hole of the body
    std::vector<PoseClass> classes;
    std::vector<Shape> shapes; // one for each class, at its middle angle
    double area = 0;           // of outer
    double leastArea = 0;      // that the outline as it is drawn has at least; 0 where that is unknown
    double smallerSide = 0;    // of the box of the base
    OutlineLoss loss = OutlineLoss::None; // of outer or body

    /// Items are placed in descending order of this measure.
    double GetSize() const { return base.weight * base.weight * base.diameter; }
    /// Writes the base mirrored and turned to \a turned, whose memory is used again. The extent is that of the exact
    /// outline, grown by half the separation.
    void Turn(bool mirrored, double angle, Shape& turned) const;
    /// Returns the box of the exact outline.
    Box GetExactBox(const Pose& pose) const;
    /// The pose of the item's own coordinates when the reference point lies at \a position.
    Pose GetPose(size_t poseClass, double angle, Point position) const;
    /// The same with the reference point at the origin.
    Pose GetPose(bool mirrored, double angle) const;
    /// The family of rotations that holds the pose, or the first one if none does.
    size_t FindClass(const Pose& pose) const;
};

/// Prepares an item. Interrupted, it leaves off.
/// \param reason  why the item cannot be nested; "" otherwise
/// \return a type without outer polygon if it cannot, or if it was interrupted
ItemType PrepareItem(const Item& item, const Job& job, std::string& reason,
                     const Interruption& isOver = NeverInterrupted);

/// Prepares an item quickly, with its convex hull in place of its outline.
/// \param reason  why the item cannot be nested; "" otherwise
/// \return a type without outer polygon if it cannot
ItemType PrepareHull(const Item& item, const Job& job, std::string& reason);

} // namespace ZORNestSolver
