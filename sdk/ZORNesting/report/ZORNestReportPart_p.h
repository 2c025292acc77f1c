// What is cut for the parts of a report.

#pragma once

#include "solver/model/ZORNestSolverJob.h"

#include <vector>

/// What is cut for one part.
struct ZORNestReportPart
{
    std::vector<ZORNestSolver::Contour> contours; // in the part's coordinates, open ones too
    double area = 0;                              // less the holes
    double cutLength = 0;
};

/// Measures the parts as the items of the job draw them: the largest contour less all others.
std::vector<ZORNestReportPart> ZORNestMeasureParts(const ZORNestSolver::Job& job);
