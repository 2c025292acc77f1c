// What an STL loader found and what it left out.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QCoreApplication>
#include <QString>

/// Counts of one load. All zero but `facets` for a file without blemish.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORGEOMETRY_EXPORT ZORGeoStlReport
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoStlReport)

public:
    qint64 facets = 0;        // facets the file holds, good or not
    qint64 nonFinite = 0;     // left out: a coordinate is infinite, not a number or beyond the float range
    qint64 degenerate = 0;    // left out: two corners are the same point
    qint64 unreadable = 0;    // left out: a coordinate is no number
    qint64 incomplete = 0;    // left out: not three corners
    qint64 missing = 0;       // announced by a binary file that ends before them
    qint64 trailingBytes = 0; // behind the last facet of a binary file
    int emptySolids = 0;      // solids that gave no surface

    /// Facets that became triangles.
    qint64 GetNumUsed() const { return facets - nonFinite - degenerate - unreadable - incomplete; }
    /// Whether something is worth a warning; an empty solid is not.
    bool HasLosses() const;
    /// One line, for example "12 of 15 facets used; left out: 2 not finite, 1 degenerate".
    QString ToString() const;
};
