#include "ZORNestResultSegment.h"

#include "drawing/ZORNestArc_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

class ZORNestResultSegmentData : public QSharedData
{
public:
    friend bool operator==(const ZORNestResultSegmentData& a, const ZORNestResultSegmentData& b)
    {
        return a.points == b.points && a.types == b.types && a.centers == b.centers && a.text == b.text
               && a.justification == b.justification && a.height == b.height && a.angle == b.angle
               && a.width == b.width && a.tiltAngle == b.tiltAngle && a.font == b.font;
    }

    // Of splines.
    ZORMathSetOfPoints points; // ends of the parts, one more than parts
    QList<ZORNestResultSegment::SegmentType> types;
    QList<ZORMathPoint> centers; // one a part, the origin for lines

    // Of texts.
    QString text;
    ZORNestResultSegment::TextJustification justification = ZORNestResultSegment::BaselineLeft;
    double height = 0;
    double angle = 0;
    double width = 0;
    double tiltAngle = 0;
    QByteArray font;
};

namespace {

using Segment = ZORNestResultSegment;

void CheckNumber(bool isFinite)
{
    if (!isFinite)
        throw ZORSysException(ZORNestResultSegment::tr("a number of the segment is not finite"));
}

const ZORNestResultSegmentData& EmptyData()
{
    static const ZORNestResultSegmentData data;
    return data;
}

} // namespace

ZORNestResultSegment::ZORNestResultSegment() = default;
ZORNestResultSegment::ZORNestResultSegment(const ZORNestResultSegment& other) = default;
ZORNestResultSegment::ZORNestResultSegment(ZORNestResultSegment&& other) noexcept = default;
ZORNestResultSegment& ZORNestResultSegment::operator=(const ZORNestResultSegment& other) = default;
ZORNestResultSegment& ZORNestResultSegment::operator=(ZORNestResultSegment&& other) noexcept = default;
ZORNestResultSegment::~ZORNestResultSegment() = default;

ZORNestResultSegment::ZORNestResultSegment(SegmentType type, const ZORMathPoint& start,
                                           const ZORMathPoint& end)
    : m_start(start)
    , m_end(end)
    , m_type(type)
{
    CheckNumber(start.IsFinite() && end.IsFinite());
}

ZORNestResultSegment ZORNestResultSegment::CreateLine(const ZORMathPoint& start, const ZORMathPoint& end)
{
    ZOR_TRACE_CALL(start, end);
    return {Line, start, end};
}

ZORNestResultSegment ZORNestResultSegment::CreateArc(SegmentType type, const ZORMathPoint& start,
                                                     const ZORMathPoint& end, const ZORMathPoint& center)
{
    ZOR_TRACE_CALL(type, start, end, center);
    if (!zor::nest::IsArc(type))
        throw ZORSysException(tr("%1 is no type of an arc").arg(int(type)));
    CheckNumber(center.IsFinite());
    ZORNestResultSegment segment(type, start, end);
    segment.m_center = center;
    return segment;
}

ZORNestResultSegment ZORNestResultSegment::CreateSpline(const QList<ZORNestResultSegment>& parts)
{
    ZOR_TRACE_CALL(parts);
    ZORNestResultSegment spline(Spline, {}, {});
    spline.d = new ZORNestResultSegmentData;
    for (const ZORNestResultSegment& part : parts) {
        if (part.m_type != Line && !zor::nest::IsArc(part.m_type))
            throw ZORSysException(tr("a spline consists of lines and arcs"));
        ZORMathSetOfPoints& points = spline.d->points;
        if (points.isEmpty()) {
            points.append(part.m_start);
        } else if (points.last().DistanceTo(part.m_start) > joinTolerance) {
            throw ZORSysException(tr("part %1 of the spline does not start where the one before ends")
                                      .arg(spline.d->types.size() + 1));
        }
        points.append(part.m_end);
        spline.d->types.append(part.m_type);
        spline.d->centers.append(part.m_center);
    }
    if (!parts.isEmpty()) {
        spline.m_start = parts.first().m_start;
        spline.m_end = parts.last().m_end;
    }
    return spline;
}

ZORNestResultSegment ZORNestResultSegment::CreateText(const ZORMathPoint& start, const ZORMathPoint& end,
                                                      const QString& text)
{
    ZOR_TRACE_CALL(start, end, text);
    ZORNestResultSegment segment(Text, start, end);
    segment.d = new ZORNestResultSegmentData;
    segment.d->text = text;
    segment.d->height = 10;
    segment.d->width = 1;
    return segment;
}

ZORNestResultSegment ZORNestResultSegment::CreateOther(SegmentType type, const ZORMathPoint& start,
                                                       const ZORMathPoint& end)
{
    ZOR_TRACE_CALL(type, start, end);
    if (zor::nest::IsArc(type) || type == Spline || type == Text)
        throw ZORSysException(tr("a segment of type %1 needs more than two points").arg(int(type)));
    return {type, start, end};
}

namespace {

/// Throws unless a segment of \a count parts has part \a sub.
/// \return whether a part is meant, not the whole
bool IsPart(int sub, int count)
{
    if (sub == -1)
        return false;
    if (sub < 0 || sub >= count)
        throw ZORSysException(ZORNestResultSegment::tr("the segment has no part %1").arg(sub));
    return true;
}

} // namespace

ZORNestResultSegment::SegmentType ZORNestResultSegment::GetType(int sub) const
{
    return IsPart(sub, GetNumSplineGeometry()) ? d->types.at(sub) : m_type;
}

ZORMathPoint ZORNestResultSegment::GetStartPoint(int sub) const
{
    return IsPart(sub, GetNumSplineGeometry()) ? d->points.at(sub) : m_start;
}

ZORMathPoint ZORNestResultSegment::GetEndPoint(int sub) const
{
    return IsPart(sub, GetNumSplineGeometry()) ? d->points.at(sub + 1) : m_end;
}

ZORMathPoint ZORNestResultSegment::GetArcCenter(int sub) const
{
    return IsPart(sub, GetNumSplineGeometry()) ? d->centers.at(sub) : m_center;
}

ZORMathCircle ZORNestResultSegment::GetArcCircle(int sub) const
{
    if (!zor::nest::IsArc(GetType(sub)))
        return {};
    const ZORMathPoint center = GetArcCenter(sub);
    const ZORMathVector offset = GetStartPoint(sub) - center;
    // An arc lies in the plane of its start, whatever the height of its centre.
    return {ZORMathPoint(center.GetX(), center.GetY(), GetStartPoint(sub).GetZ()),
            std::hypot(offset.GetX(), offset.GetY())};
}

ZORMathSetOfPoints ZORNestResultSegment::GetPoints(double tolerance) const
{
    ZORMathSetOfPoints points;
    if (zor::nest::IsArc(m_type)) {
        points.append(m_start);
        ZorNestSampleArc({m_type, m_start, m_end, m_center}, tolerance, points);
    } else if (m_type == Spline) {
        if (!d->points.isEmpty())
            points.append(m_start);
        for (int i = 0; i < GetNumSplineGeometry(); ++i) {
            if (d->types[i] == Line)
                points.append(d->points[i + 1]);
            else
                ZorNestSampleArc({d->types[i], d->points[i], d->points[i + 1], d->centers[i]}, tolerance,
                                 points);
        }
    } else {
        points = {m_start, m_end};
    }
    return points;
}

int ZORNestResultSegment::GetNumSplineGeometry() const
{
    return d ? int(d->types.size()) : 0;
}

ZORMathSetOfPoints ZORNestResultSegment::GetSplinePoints() const
{
    return d ? d->points : ZORMathSetOfPoints();
}

QList<ZORNestResultSegment::SegmentType> ZORNestResultSegment::GetSplineLineTypes() const
{
    return d ? d->types : QList<SegmentType>();
}

QString ZORNestResultSegment::GetText() const
{
    return d ? d->text : QString();
}

ZORNestResultSegment::TextJustification ZORNestResultSegment::GetTextJustification() const
{
    return (d ? *d : EmptyData()).justification;
}

double ZORNestResultSegment::GetTextHeight() const
{
    return (d ? *d : EmptyData()).height;
}

double ZORNestResultSegment::GetTextAngle() const
{
    return (d ? *d : EmptyData()).angle;
}

double ZORNestResultSegment::GetTextWidth() const
{
    return (d ? *d : EmptyData()).width;
}

double ZORNestResultSegment::GetTextTiltAngle() const
{
    return (d ? *d : EmptyData()).tiltAngle;
}

QByteArray ZORNestResultSegment::GetFont() const
{
    return d ? d->font : QByteArray();
}

ZORNestResultSegmentData& ZORNestResultSegment::ChangeText()
{
    if (m_type != Text)
        throw ZORSysException(tr("the segment is no text"));
    return *d;
}

void ZORNestResultSegment::SetTextJustification(TextJustification justification)
{
    ZOR_TRACE_CALL(justification);
    ChangeText().justification = justification;
}

void ZORNestResultSegment::SetTextHeight(double height)
{
    ZOR_TRACE_CALL(height);
    CheckNumber(std::isfinite(height));
    ChangeText().height = height;
}

void ZORNestResultSegment::SetTextAngle(double angle)
{
    ZOR_TRACE_CALL(angle);
    CheckNumber(std::isfinite(angle));
    ChangeText().angle = angle;
}

void ZORNestResultSegment::SetTextWidth(double width)
{
    ZOR_TRACE_CALL(width);
    CheckNumber(std::isfinite(width));
    ChangeText().width = width;
}

void ZORNestResultSegment::SetTextTiltAngle(double angle)
{
    ZOR_TRACE_CALL(angle);
    CheckNumber(std::isfinite(angle));
    ChangeText().tiltAngle = angle;
}

void ZORNestResultSegment::SetFont(const QByteArray& font)
{
    ZOR_TRACE_CALL(font);
    ChangeText().font = font;
}

void ZORNestResultSegment::SetColor(const QColor& color)
{
    ZOR_TRACE_CALL(color.isValid() ? color.name(QColor::HexArgb) : QString());
    m_color = color.isValid() ? QColor::fromRgba(color.rgba()) : QColor();
}

void ZORNestResultSegment::SetLayer(Layer layer)
{
    ZOR_TRACE_CALL(layer);
    m_layer = layer;
}

void ZORNestResultSegment::SetLineStyle(int lineStyle)
{
    ZOR_TRACE_CALL(lineStyle);
    m_lineStyle = lineStyle;
}

bool operator==(const ZORNestResultSegment& a, const ZORNestResultSegment& b)
{
    const bool isSameData = a.d == b.d || (a.d && b.d && *a.d == *b.d);
    return isSameData && a.m_type == b.m_type && a.m_start == b.m_start && a.m_end == b.m_end
           && a.m_center == b.m_center && a.m_color == b.m_color && a.m_layer == b.m_layer
           && a.m_lineStyle == b.m_lineStyle;
}

void ZorTraceAppend(QByteArray& out, const ZORNestResultSegment& segment)
{
    out += '(';
    ZorTraceAppend(out, segment.m_type);
    out += ", ";
    ZorTraceAppend(out, segment.m_start);
    out += ", ";
    ZorTraceAppend(out, segment.m_end);
    out += ')';
}
