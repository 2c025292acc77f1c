#include "ZORGeoStlReport.h"

#include <QStringList>

bool ZORGeoStlReport::HasLosses() const
{
    return GetNumUsed() != facets || missing > 0 || trailingBytes > 0;
}

QString ZORGeoStlReport::ToString() const
{
    QStringList parts;
    const auto add = [&parts](qint64 count, const char* what) {
        if (count > 0)
            parts.append(QString::number(count) + QLatin1Char(' ') + QLatin1String(what));
    };
    add(nonFinite, "not finite");
    add(degenerate, "degenerate");
    add(unreadable, "with unreadable coordinates");
    add(incomplete, "without three corners");
    add(missing, "announced but missing");
    add(trailingBytes, "bytes behind the last facet");
    QString text = QStringLiteral("%1 of %2 facets used").arg(GetNumUsed()).arg(facets);
    if (!parts.isEmpty())
        text += QStringLiteral("; left out: ") + parts.join(QStringLiteral(", "));
    return text;
}
