// Icons of the feature browser, drawn in the colours of a palette.

#pragma once

#include <QIcon>

class QPalette;

/// What the eye of an item shows: whether the item and what is below it are visible.
enum class ZORFeatBrowserEye { None, Open, Closed, Mixed };

/// What an item of the browser stands for.
enum class ZORFeatBrowserKind { Root, Folder, Shape, Feature, Point, Curve, Surface, Body, Other };

/// Line drawing that is sharp at every size and pixel ratio. Selected items get the palette's highlight
/// colours, all others a hue by kind that keeps its distance to the base colour, light or dark.
QIcon ZORFeatBrowserIcon(ZORFeatBrowserKind kind, const QPalette& palette);
/// An open or a closed eye, or a pale open one where some things are visible and some are not; a null icon for None.
QIcon ZORFeatBrowserEyeIcon(ZORFeatBrowserEye eye, const QPalette& palette);
