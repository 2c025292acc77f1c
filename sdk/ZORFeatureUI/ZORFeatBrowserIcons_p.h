// Icons of the feature browser, drawn in the colours of a palette.

#pragma once

#include <QIcon>

class QPalette;

/// What an item of the browser stands for.
enum class ZORFeatBrowserKind { Root, Folder, Shape, Feature, Point, Curve, Surface, Body, Other };

/// Line drawing that is sharp at every size and pixel ratio. Selected items get the palette's highlight
/// colours, all others a hue by kind that keeps its distance to the base colour, light or dark.
QIcon ZORFeatBrowserIcon(ZORFeatBrowserKind kind, const QPalette& palette);
