// What a layout holds.

#pragma once

#include "formats/ZORNestInstance_p.h"
#include "solver/model/ZORNestSolverSolution.h"

class ZORNestLayoutData : public QSharedData
{
public:
    ZORNestInstance instance;
    ZORNestSolver::Solution solution;
};
