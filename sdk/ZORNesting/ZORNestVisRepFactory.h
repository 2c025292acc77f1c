// Representations of nesting results.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

class ZORNestResult;
class ZORNestVisOptions;
class ZORVisRep;

/// Makes representations of nesting results.
/// Thread safety: thread-safe.
class ZORNESTING_EXPORT ZORNestVisRepFactory
{
public:
    /// Draws the sheet and its items: areas of closed outlines without their holes, segments in the look of
    /// their layers (their own colour and line style where they have one), texts, and each item's name as large
    /// as its box allows. Deviates from arcs by no more than 1/50000 of the result's size.
    ///
    /// Areas follow the even-odd rule within each item. O(points log points); the same result gives the same
    /// drawing.
    /// \return owned by the caller; empty for an empty or invalid result, never null
    static ZORVisRep* CreateRep(const ZORNestResult& result, const ZORNestVisOptions& options);
};
