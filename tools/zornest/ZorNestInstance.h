// Nesting instances as JSON documents.

#pragma once

#include "ZORNestSolverModel.h"

#include <QByteArray>
#include <QString>

namespace ZorNest {

/// What a document holds; \a error says why there is no job, "" otherwise.
struct Instance
{
    ZORNestSolver::Job job;
    QString name;
    QString error;
};

/// Reads an instance: "items" with "demand", "shape" ("simple_polygon", "polygon" or "path") and either
/// "allowed_orientations" in degrees or "orientation_deg" with "grain90", "grain180", "grain270",
/// "max_deviation_deg" and "deviation_increment_deg"; an item with neither may be turned freely. Sheets are
/// "strip_height" (one roll), "bins" or "packagings"; "params" hold the separations, the frame, the stack
/// size, "single_sided" and "usage_rule".
Instance ReadInstance(const QByteArray& document);

/// The layout document of a solution: sheets with their placements, and what was not placed.
QByteArray WriteLayout(const ZORNestSolver::Job& job, const ZORNestSolver::Solution& solution);

} // namespace ZorNest
