// What an instance holds.

#pragma once

#include "solver/model/ZORNestSolverJob.h"

#include <ZORNesting/ZORNestInstance.h>

#include <QSharedData>
#include <QString>

#include <vector>

class ZORNestInstanceData : public QSharedData
{
public:
    QString name;
    ZORNestSolver::Job job;
    std::vector<int>
        itemIds; // by which layouts name the items; none of an instance that is read for translation
    std::vector<int> kindIds; // by which layouts name the sheets
    QString fault;            // of the last item
};
