// How the layers of nesting results look.

#pragma once

#include <ZORNesting/ZORNestResultSegment.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORVisualization/ZORVisOptions.h>

#include <QColor>

/// The look of one layer, and the filter that shows it.
struct ZORNestLayerLook
{
    /// Numbers that are no layer look as Extra.
    static const ZORNestLayerLook& Of(ZORNestResultSegment::Layer layer);

    ZORNestResultSegment::Layer layer;
    ZORNestVisOptions::Filter filter;
    QColor color;
    double thickness;
    ZORVisOptions::LineStyle lineStyle;
};
