// Table of the line patterns.

#pragma once

#include <ZORVisualization/ZORVisOptions.h>

#include <QColor>
#include <QList>

#include <cstdint>

/// 16 steps of a line, the first in the lowest bit, set where the line is drawn. Solid for codes out of
/// range.
uint16_t ZORVisLinePattern(ZORVisOptions::LineStyle style);

/// Color of the edges of triangles on a surface of a color.
QColor ZORVisEdgeColor(const QColor& surface);

/// Length of a step in pixels for a line of a thickness in pixels: gaps stay visible on thick lines.
int ZORVisLinePatternStep(double thickness);

/// The same pattern as lengths of alternating dashes and gaps, in steps, beginning with a dash; empty for
/// solid.
QList<int> ZORVisLineDashes(ZORVisOptions::LineStyle style);
