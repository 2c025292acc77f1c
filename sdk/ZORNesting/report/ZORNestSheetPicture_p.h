// Drawings of nested sheets.

#pragma once

#include "ZORNestReportPart_p.h"
#include "solver/model/ZORNestSolverSolution.h"

#include <QColor>
#include <QPainterPath>
#include <QRectF>

class QPainter;

/// Draws the sheets of one solution; see ZORNestReport::DrawSheet().
class ZORNestSheetPicture
{
public:
    /// \param polygons  around the parts, one for each; empty for what is none
    ZORNestSheetPicture(const ZORNestSolver::Job& job, const std::vector<ZORNestReportPart>& parts,
                        const std::vector<ZORNestSolver::Polygon>& polygons);

    QImage Draw(const ZORNestSolver::NestedSheet& sheet, int width) const;
    /// The colour of a part.
    static QColor GetColor(size_t item);

private:
    /// Where a part's number stands, in its own coordinates.
    struct Label
    {
        ZORNestSolver::Point center;
        double radius = 0; // of the largest circle inside the part
    };

    void DrawRow(QPainter& painter, const ZORNestSolver::NestedSheet& sheet, const ZORNestSolver::Box& view,
                 const QRectF& place) const;
    void DrawPart(QPainter& painter, const ZORNestSolver::Placement& placement,
                  const QTransform& toPixels) const;
    void DrawLabel(QPainter& painter, const ZORNestSolver::Placement& placement,
                   const QTransform& toPixels) const;

    const ZORNestSolver::Job& m_job;
    std::vector<QPainterPath> m_outlines; // one for each item of the job
    std::vector<QRectF> m_bounds;         // of the outlines
    std::vector<Label> m_labels;
};
