// What an STL loader found and what it left out.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QCoreApplication>
#include <QSharedDataPointer>
#include <QString>

class ZORGeoStlReportData;

/// Counts of one load. All zero but the facets for a file without blemish. A value: copies share their data, O(1). One
/// that was moved from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoStlReport
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoStlReport)

public:
    /// All counts zero.
    ZORGeoStlReport();
    ZORGeoStlReport(const ZORGeoStlReport& other);
    ZORGeoStlReport(ZORGeoStlReport&& other) noexcept;
    ZORGeoStlReport& operator=(const ZORGeoStlReport& other);
    ZORGeoStlReport& operator=(ZORGeoStlReport&& other) noexcept;
    ~ZORGeoStlReport();
    void swap(ZORGeoStlReport& other) noexcept { d.swap(other.d); }

    /// Returns the number of facets that the file holds, usable or not.
    qint64 GetNumFacets() const;
    /// Returns the number of facets skipped because a coordinate is infinite, not a number or beyond the float range.
    qint64 GetNumNonFinite() const;
    /// Returns the number of facets skipped because two corners are the same point.
    qint64 GetNumDegenerate() const;
    /// Returns the number of facets skipped because a coordinate is not a number in the text.
    qint64 GetNumUnreadable() const;
    /// Returns the number of facets skipped because they do not have three corners.
    qint64 GetNumIncomplete() const;
    /// Returns the number of facets that a binary file announces and ends before.
    qint64 GetNumMissing() const;
    /// Returns the number of bytes behind the last facet of a binary file.
    qint64 GetNumTrailingBytes() const;
    /// Returns the number of solids without a surface.
    int GetNumEmptySolids() const;

    /// Returns the number of facets that became triangles.
    qint64 GetNumUsed() const;
    /// Whether something is worth a warning; an empty solid is not.
    bool HasLosses() const;
    /// One line, for example "12 of 15 facets used; left out: 2 not finite, 1 degenerate".
    QString ToString() const;

private:
    friend class ZORGeoStlParser;
    friend class ZORGeoStlSolidBuilder;

    QSharedDataPointer<ZORGeoStlReportData> d;
};

Q_DECLARE_SHARED(ZORGeoStlReport)
