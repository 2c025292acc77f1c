#include "ZORGeoStlReport.h"

#include <QStringList>

bool ZORGeoStlReport::HasLosses() const
{
    return GetNumUsed() != facets || missing > 0 || trailingBytes > 0;
}

QString ZORGeoStlReport::ToString() const
{
    QStringList parts;
    const auto add = [&parts](qint64 count, const QString& what) {
        if (count > 0)
            parts.append(QString::number(count) + u' ' + what);
    };
    add(nonFinite, tr("not finite"));
    add(degenerate, tr("degenerate"));
    add(unreadable, tr("with unreadable coordinates"));
    add(incomplete, tr("without three corners"));
    add(missing, tr("announced but missing"));
    add(trailingBytes, tr("bytes behind the last facet"));
    QString text = tr("%1 of %2 facets used").arg(QString::number(GetNumUsed()), QString::number(facets));
    if (!parts.isEmpty())
        text += tr("; left out: ") + parts.join(QLatin1String(", "));
    return text;
}
