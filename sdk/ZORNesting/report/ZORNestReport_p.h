// The report of a nesting: what lies where, what is left, and what found no place.

#pragma once

#include "solver/ZORNestSolverModel.h"

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class ZORNestSheetPicture;

/// What is cut for one part.
struct ZORNestReportPart
{
    std::vector<ZORNestSolver::Contour> contours; // in the part's coordinates, open ones too
    double area = 0;                              // less the holes
    double cutLength = 0;
};

/// What a report tells besides the job and its solution.
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
class ZORNESTING_EXPORT ZORNestReport
{
public:
    ZORNestReport(const ZORNestSolver::Job& job, const ZORNestSolver::Solution& solution,
                  const ZORNestReportDetails& details);
    ~ZORNestReport();
    Q_DISABLE_COPY_MOVE(ZORNestReport)

    /// The parts as the items of the job draw them: the largest contour less all others.
    static std::vector<ZORNestReportPart> MeasureParts(const ZORNestSolver::Job& job);

    /// UTF-8.
    QByteArray Write() const;

    /// A sheet with its parts, to scale; long ones in several rows. The parts bear the numbers that they have in the
    /// tables of the report, where there is a QGuiApplication to bring fonts. Mirrored ones are hatched.
    /// \param sheet  index in the solution
    /// \param width  in pixels
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
};
