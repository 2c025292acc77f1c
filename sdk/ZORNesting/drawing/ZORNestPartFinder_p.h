// Finds the parts of a drawing.

#pragma once

#include "ZORNestPart_p.h"

#include <QList>
#include <QStringList>

class ZORNestDrawing;
class ZORWorkContext;

/// Turns a drawing into parts: an outline with its holes and with what is drawn on it.
///
/// Closed chains are outlines, unless their layer says that they are something else (see GetLayer). An
/// outline in a hole is a part of its own. Whatever else is drawn belongs to the part that it lies on.
namespace ZORNestPartFinder {

/// How many closed outlines a drawing may have.
constexpr int kMaximumOutlines = 50000;

/// The layer of a result file, ZORNestResultSegment::Layer, that a layer's name stands for: one of "nest",
/// "tabs", "etch box", "etching data", "non-nestable", "extra", "lead out", "lead in", "line string", "grid
/// string", "auto nibble", "auto bridge" and "grain", whatever the case, with blanks, underscores or hyphens;
/// Automatic for all others.
int GetLayer(const QString& name);

/// \param tolerance  for joining, see ZORNestJoiner
/// \param name       of the parts: alone for a single one, else with "-1", "-2" ... in the order of the drawing
/// \param report     gets lines about what was joined and left out
/// \throws ZORSysException "no closed outline found", "no closed outline found: %1 curves have loose ends",
///         "drawing has more than %1 outlines"
QList<ZORNestPart> FindParts(ZORNestDrawing& drawing, double tolerance, const QString& name,
                             QStringList& report, const ZORWorkContext& context);

} // namespace ZORNestPartFinder
