// Counts of a load of STL content, which the parser and the builder of solids fill.

#pragma once

#include <ZORGeometry/ZORGeoStlReport.h>

#include <QSharedData>

class ZORGeoStlReportData : public QSharedData
{
public:
    qint64 facets = 0;
    qint64 nonFinite = 0;
    qint64 degenerate = 0;
    qint64 unreadable = 0;
    qint64 incomplete = 0;
    qint64 missing = 0;
    qint64 trailingBytes = 0;
    int emptySolids = 0;
};
