#include "ZORNestContourReader.h"

#include "drawing/ZORNestUnits_p.h"
#include "formats/ZORNestContourXml_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileDevice>

QList<ZORNestContour> ZORNestContourReader::Read(QFileDevice& file)
{
    ZOR_TRACE_CALL(&file);
    constexpr qint64 kMaximumSize = qint64(256) << 20; // as for translations
    if (file.size() - file.pos() > kMaximumSize)
        throw ZORSysFileException(tr("the file is larger than 256 MB"));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw ZORSysFileException(tr("read error: %1").arg(file.errorString()));
    QList<ZORNestContour> contours;
    for (const ZORNestContourXml::Contour& contour : ZORNestContourXml::Read(bytes)) {
        ZORMathSetOfPoints points;
        points.reserve(contour.points.size());
        for (qsizetype i = 0; i < contour.points.size(); ++i)
            points.append({contour.points[i].x, contour.points[i].y, contour.heights[i]});
        contours.append({contour.name, points});
    }
    if (contours.isEmpty())
        throw ZORSysException(tr("there is no contour in the file"));
    return contours;
}
