// A nesting job as the solver takes it.

#pragma once

#include "ZORNestNestingPart_p.h"
#include "solver/model/ZORNestSolverSolution.h"

#include <QCoreApplication>
#include <QStringList>

#include <functional>

class ZORNestNestingInput;

/// What an input asks for, with the values that can be used.
class ZORNestNestingJob
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestNestingJob)

public:
    /// Most copies of parts that one job takes, high priorities first; the rest has no place.
    static constexpr int kMostCopies = 5000;

    /// Reads the part files. Calls \a isCanceled between them and gives up if it is true. Once \a isOver is true, it
    /// reads on for a second of processor time; parts that have not been read then have no time left.
    ZORNestNestingJob(const ZORNestNestingInput& input, const std::function<bool()>& isCanceled,
                      const std::function<bool()>& isOver);

    const ZORNestSolver::Job& GetSolverJob() const { return m_job; }
    /// One for each item of the solver's job.
    const QList<ZORNestNestingPart>& GetParts() const { return m_parts; }
    const QStringList& GetRemarks() const { return m_remarks; }

    /// Gives the parts without a place the true reasons, in the order of the parts.
    void Complete(ZORNestSolver::Solution& solution) const;

    /// The result file (*.msi) of a sheet of the solution.
    QByteArray WriteSheet(const ZORNestSolver::NestedSheet& sheet) const;

private:
    void AddItem(const ZORNestNestingInput& input, qsizetype index, bool isRead);
    void AddKind(const ZORNestNestingInput& input, qsizetype index);
    double GetNumber(double value, const QString& meaning);

    ZORNestSolver::Job m_job;
    QList<ZORNestNestingPart> m_parts;
    QStringList m_remarks;
};
