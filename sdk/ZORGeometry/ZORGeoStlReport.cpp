#include "ZORGeoStlReport.h"

#include "stl/ZORGeoStlReport_p.h"

#include <QStringList>

ZORGeoStlReport::ZORGeoStlReport()
    : d(new ZORGeoStlReportData)
{
}

ZORGeoStlReport::ZORGeoStlReport(const ZORGeoStlReport& other) = default;
ZORGeoStlReport::ZORGeoStlReport(ZORGeoStlReport&& other) noexcept = default;
ZORGeoStlReport& ZORGeoStlReport::operator=(const ZORGeoStlReport& other) = default;
ZORGeoStlReport& ZORGeoStlReport::operator=(ZORGeoStlReport&& other) noexcept = default;
ZORGeoStlReport::~ZORGeoStlReport() = default;

qint64 ZORGeoStlReport::GetNumFacets() const
{
    return d->facets;
}

qint64 ZORGeoStlReport::GetNumNonFinite() const
{
    return d->nonFinite;
}

qint64 ZORGeoStlReport::GetNumDegenerate() const
{
    return d->degenerate;
}

qint64 ZORGeoStlReport::GetNumUnreadable() const
{
    return d->unreadable;
}

qint64 ZORGeoStlReport::GetNumIncomplete() const
{
    return d->incomplete;
}

qint64 ZORGeoStlReport::GetNumMissing() const
{
    return d->missing;
}

qint64 ZORGeoStlReport::GetNumTrailingBytes() const
{
    return d->trailingBytes;
}

int ZORGeoStlReport::GetNumEmptySolids() const
{
    return d->emptySolids;
}

qint64 ZORGeoStlReport::GetNumUsed() const
{
    return d->facets - d->nonFinite - d->degenerate - d->unreadable - d->incomplete;
}

bool ZORGeoStlReport::HasLosses() const
{
    return GetNumUsed() != d->facets || d->missing > 0 || d->trailingBytes > 0;
}

QString ZORGeoStlReport::ToString() const
{
    QStringList parts;
    const auto add = [&parts](qint64 count, const QString& what) {
        if (count > 0)
            parts.append(QString::number(count) + u' ' + what);
    };
    add(d->nonFinite, tr("not finite"));
    add(d->degenerate, tr("degenerate"));
    add(d->unreadable, tr("with unreadable coordinates"));
    add(d->incomplete, tr("without three corners"));
    add(d->missing, tr("announced but missing"));
    add(d->trailingBytes, tr("bytes behind the last facet"));
    QString text = tr("%1 of %2 facets used").arg(QString::number(GetNumUsed()), QString::number(d->facets));
    if (!parts.isEmpty())
        text += tr("; left out: ") + parts.join(QLatin1String(", "));
    return text;
}
