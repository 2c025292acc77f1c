// What a layout holds.

#pragma once

#include "formats/ZORNestInstance_p.h"

class ZORNestLayoutData : public QSharedData
{
public:
    ZORNestInstance instance;
    ZORNestSolver::Solution solution;
};
