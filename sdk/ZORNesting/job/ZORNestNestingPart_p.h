// Parts of result files as the nesting solver takes them.

#pragma once

#include "report/ZORNestReportPart_p.h"

#include <ZORNesting/ZORNestResultItem.h>

#include <QCoreApplication>

/// A part that is to be nested.
struct ZORNestNestingPart
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestNestingPart)

public:
    ZORNestResultItem item; // as its file has it
    std::vector<ZORNestSolver::Contour>
        contours;          // closed, the outline and the holes that may take other parts
    ZORNestReportPart cut; // what is cut in truth
    QString failure;       // why it cannot be nested; empty if it can
    QString remark;        // what is done differently with it; may be empty
};

/// The parts of a result file (*.msi), at least one: a file that cannot be read, or holds no item, makes one
/// part with a failure. Never throws for what the file holds.
///
/// Outlines are the closed chains of lines, arcs and splines on the layers Automatic, Nest, Tabs, AutoNibble and
/// AutoBridge. Holes with something in them that belongs to the part take no other parts. Several outlines
/// next to each other keep their places and are nested within their convex hull.
QList<ZORNestNestingPart> ZORNestReadParts(const QString& name, const QByteArray& contents);
