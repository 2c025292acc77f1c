// Writes the report of a nesting: what is where, what is left, and what has found no place.

#pragma once

#include "ZORNestHtml_p.h"
#include "ZORNestReportPart_p.h"
#include "solver/model/ZORNestSolverSolution.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class ZORNestSheetPicture;

/// What a report shows besides the job and its solution.
struct ZORNestReportDetails
{
    QString material;
    double thickness = 0;
    double runTime = 0;  // seconds
    QString ending;      // why the run ended; may be empty
    QStringList remarks; // before those of the solution
    /// One for each item of the job.
    std::vector<ZORNestReportPart> parts;
};

/// Writes one solution of a job as HTML within what QTextDocument shows, pictures included, readable on dark
/// and on light backgrounds. May run in any thread. All three must outlive the report.
class ZORNestReportWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestReportWriter)

public:
    ZORNestReportWriter(const ZORNestSolver::Job& job, const ZORNestSolver::Solution& solution,
                        const ZORNestReportDetails& details);
    ~ZORNestReportWriter();
    Q_DISABLE_COPY_MOVE(ZORNestReportWriter)

    /// See ZORNestReport::Write() and ZORNestReport::DrawSheet().
    QByteArray Write() const;
    QImage DrawSheet(size_t sheet, int width) const;

private:
    struct Totals;

    Totals GetTotals() const;
    QString WriteTitle(const Totals& totals) const;
    QString WriteTotals(const Totals& totals) const;
    QString WriteUnplaced() const;
    QString WriteRemarks() const;
    QString WriteSheet(size_t sheet) const;
    QString WriteSheetFacts(size_t sheet) const;
    QString WritePicture(size_t sheet) const;
    QString WriteParts(size_t sheet) const;
    QString WriteRemnant(const ZORNestSolver::NestedSheet& sheet) const;

    double GetPartArea(const ZORNestSolver::NestedSheet& sheet) const;
    double GetCutLength(const ZORNestSolver::NestedSheet& sheet) const;
    double GetSheetArea(const ZORNestSolver::NestedSheet& sheet) const;
    ZORNestSolver::Box GetOccupied(const ZORNestSolver::NestedSheet& sheet) const;

    const ZORNestSolver::Job& m_job;
    const ZORNestSolver::Solution& m_solution;
    const ZORNestReportDetails& m_details;
    std::vector<ZORNestSolver::Polygon> m_polygons; // one for each item of the job; empty for what is none
    std::unique_ptr<const ZORNestSheetPicture> m_picture;
    ZORNestHtml::Unit m_areaUnit = ZORNestHtml::Unit::Small;   // of single parts
    ZORNestHtml::Unit m_lengthUnit = ZORNestHtml::Unit::Small; // of cut lengths
};
