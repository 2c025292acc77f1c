#include "ZORNestContourXml_p.h"
#include "ZORNestXml_p.h"
#include "drawing/ZORNestUnits_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QStringList>

#include <algorithm>

using zor::nest::kInch;

namespace {

// Of contours, in characters. Elements may nest deep, and each contour in them repeats all of their names.
constexpr qsizetype kLongestName = 4000;

// "X=1 Y=2 Z=3", or the bare numbers.
void ReadPoint(QXmlStreamReader& xml, ZORNestContourXml::Contour& contour)
{
    const qint64 line = xml.lineNumber();
    const QStringList words = xml.readElementText(QXmlStreamReader::IncludeChildElements)
                                  .simplified()
                                  .split(u' ', Qt::SkipEmptyParts);
    ZORNestXml::CheckError(xml);
    double values[3] = {0, 0, 0};
    for (qsizetype i = 0; i < std::min<qsizetype>(3, words.size()); ++i) {
        bool isNumber = false;
        values[i] = words[i].mid(words[i].lastIndexOf(u'=') + 1).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(values[i]))
            throw ZORSysException(ZORNestContourXml::tr("line %1: '%2' is no coordinate")
                                      .arg(QString::number(line), words[i].left(40)));
    }
    if (words.size() < 2)
        throw ZORSysException(
            ZORNestContourXml::tr("line %1: point has less than two coordinates").arg(line));
    if (contour.points.isEmpty())
        contour.zMin = contour.zMax = values[2];
    contour.zMin = std::min(contour.zMin, values[2]);
    contour.zMax = std::max(contour.zMax, values[2]);
    contour.points.append({values[0], values[1]});
    contour.heights.append(values[2]);
}

// "A/B" of the last names up to the first element without one; empty names at the end do not count.
QString JoinNames(const QStringList& names)
{
    qsizetype begin = names.size();
    while (begin > 0 && !names[begin - 1].isNull())
        --begin;
    qsizetype end = names.size();
    while (end > begin && names[end - 1].isEmpty())
        --end;
    QString name;
    for (qsizetype i = begin; i < end && name.size() < kLongestName; ++i)
        name += (i > begin ? QStringLiteral("/") : QString()) + names[i];
    return name.left(kLongestName);
}

ZORNestContourXml::Contour ReadContour(QXmlStreamReader& xml, const QStringList& names)
{
    ZORNestContourXml::Contour contour;
    contour.name = JoinNames(names);
    while (xml.readNextStartElement()) {
        if (xml.name() == u"Pt")
            ReadPoint(xml, contour);
        else
            xml.skipCurrentElement();
    }
    return contour;
}

} // namespace

QList<ZORNestContourXml::Contour> ZORNestContourXml::Read(const QByteArray& bytes)
{
    QXmlStreamReader xml(bytes);
    ZORNestXml::CheckMarkup(bytes, xml);
    QList<Contour> contours;
    QStringList names; // of the elements around, null for those without
    QString unit;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (xml.name() == u"OuterContour") {
                contours.append(ReadContour(xml, names));
            } else if (xml.name() == u"Length" && unit.isNull()) {
                unit = xml.readElementText(QXmlStreamReader::IncludeChildElements) + QLatin1String("");
            } else {
                const QXmlStreamAttributes attributes = xml.attributes();
                const QLatin1String key("NAME");
                names.append(attributes.hasAttribute(key)
                                 ? attributes.value(key).toString() + QLatin1String("")
                                 : QString());
            }
            break;
        case QXmlStreamReader::EndElement:
            names.removeLast();
            break;
        default:
            break;
        }
    }
    ZORNestXml::CheckError(xml);
    if (unit == u"in") {
        for (Contour& contour : contours) {
            for (ZORNestPlanePoint& point : contour.points)
                point = kInch * point;
            for (double& height : contour.heights)
                height *= kInch;
        }
    }
    return contours;
}
