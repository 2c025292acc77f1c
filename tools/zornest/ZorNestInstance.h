// Nesting instances as JSON documents, and the layouts that answer them.

#pragma once

#include "ZORNestSolverModel.h"

#include <QByteArray>
#include <QString>

namespace ZorNest {

/// What a document holds; \a error says why there is no job, "" otherwise.
struct Instance
{
    ZORNestSolver::Job job;
    std::vector<int> itemIds; // by which layouts name the items
    std::vector<int> kindIds; // by which layouts name the sheets
    QString name;
    QString error;
};

/// Reads an instance: "items" with "demand", "shape" ("simple_polygon", "polygon" or "path") and either
/// "allowed_orientations" in degrees or "orientation_deg" with "grain90", "grain180", "grain270",
/// "max_deviation_deg" and "deviation_increment_deg"; an item with neither may be turned freely. Sheets are
/// "strip_height" (one roll), "bins" or "packagings"; "params" hold the separations, the frame, the stack
/// size, "single_sided" and "usage_rule", and what holds for every item of grain and deviation. Quantities are
/// exact: "allow_overproduction" changes nothing. Items and sheets without "id" are numbered from 0.
Instance ReadInstance(const QByteArray& document);

/// The layout document of a solution: sheets with their placements, and what was not placed.
QByteArray WriteLayout(const Instance& instance, const ZORNestSolver::Solution& solution);

} // namespace ZorNest
