// Poses and places at which items touch what is beside them.

#pragma once

#include "ZORNestSolverFill.h"

#include <map>

namespace ZORNestSolver {

/// By how much contacts may miss in mm, for rounding; far below the tolerance of the check.
constexpr double kContactSlack = 1e-7;

/// A pose in which an item is put against its neighbors.
struct ContactPose
{
    uint32_t poseClass = 0;
    double angle = 0;
    Box box; // of the outline, relative to the reference point
};

/// The contact poses of the items of a job: one for each allowed rotation; at free angles also those that lay a
/// long edge of the hull along an axis, and those that fit a sheet.
class ContactPoses
{
public:
    explicit ContactPoses(const PreparedJob& prepared);

    /// Computed at the first call.
    const std::vector<ContactPose>& Get(size_t item);
    /// Places on an empty sheet where a corner of the outline, or of its box, lies in a corner of what the obstacles
    /// leave free: what fills a hole between defects exactly lies there. Computed at the first call.
    const std::vector<Stand>& GetCornerPlaces(size_t item, size_t kind);

private:
    void Add(size_t item, uint32_t poseClass, double angle);
    void AddAlongEdges(size_t item, uint32_t poseClass);

    const PreparedJob& m_prepared;
    std::vector<size_t> m_kinds;                   // of different windows
    std::vector<std::vector<ContactPose>> m_poses; // by item; empty until they are asked for
    std::map<std::pair<size_t, size_t>, std::vector<Stand>> m_cornerPlaces; // by item and kind
};

} // namespace ZORNestSolver
