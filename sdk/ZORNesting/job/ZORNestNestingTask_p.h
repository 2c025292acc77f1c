// What a nesting job gets and what it returns.

#pragma once

#include "solver/model/ZORNestSolverSolution.h"

#include <ZORNesting/ZORNestNestingInput.h>

#include <QByteArray>
#include <QList>
#include <QStringList>

/// What a nesting job needs to know.
struct ZORNestNestingTask
{
    ZORNestNestingInput input;
    bool isKept = false; ///< whether part files, sheet files and report are written to the work directory too
};

/// A layout that a nesting job has reached and proved.
struct ZORNestInterimLayout
{
    ZORNestSolver::Solution solution;
    double seconds = 0; ///< since the start of the job
};

/// What came of a job; see ZORNestNestingResponse.
class ZORNestNestingOutcome
{
public:
    QList<QByteArray> sheetFiles;
    QByteArray report;
    QStringList remarks;
};
