#include "ZORNestShapeReader_p.h"

#include <cmath>

using ZORNestSolver::Contour;
using ZORNestSolver::Polygon;
using ZORNestSolver::Ring;

namespace {

/// Largest distance between the end of an arc and its circle in a translation, in parts of the radius.
constexpr double kArcTolerance = 1e-4;
constexpr int kQuotedLength = 40; // of unknown words, in messages

bool IsTranslation(const ZORNestJsonNode& node)
{
    return node.GetPurpose() == ZORNestInstance::Purpose::Translation;
}

} // namespace

/// Two of the elements as coordinates.
ZORNestSolver::Point ZORNestShapeReader::ReadPoint(const ZORNestJsonNode& node, qsizetype at)
{
    const QJsonArray values = node.GetList();
    if (values.size() < at + 2)
        node.Refuse(tr("coordinates are missing"), tr("coordinate is no number"));
    return {node.GetElement(values, at).GetNumber(), node.GetElement(values, at + 1).GetNumber()};
}

Ring ZORNestShapeReader::ReadRing(const ZORNestJsonNode& node)
{
    if (node.IsAbsent() && !IsTranslation(node))
        node.Refuse(tr("is missing"));
    Ring ring;
    node.ForEach("point", [&ring](const ZORNestJsonNode& point) { ring.push_back(ReadPoint(point)); });
    if (ring.size() > 1 && ring.front() == ring.back())
        ring.pop_back();
    return ring;
}

/// In a translation the type decides which form the data have, and holes that are no list are ignored.
template<class Function>
void ZORNestShapeReader::ForEachRing(const ZORNestJsonNode& shape, Function function)
{
    const ZORNestJsonNode data = shape["data"];
    const bool isRing = IsTranslation(shape) ? shape["type"].GetText({}) == u"simple_polygon"
                                             : data.IsAbsent() || data.IsArray();
    if (isRing) {
        function(ReadRing(data));
        return;
    }
    function(ReadRing(data["outer"]));
    const ZORNestJsonNode inner = data["inner"];
    if (inner.IsArray() || !IsTranslation(shape))
        inner.ForEach("inner", [&function](const ZORNestJsonNode& ring) { function(ReadRing(ring)); });
}

Polygon ZORNestShapeReader::ReadPolygon(const ZORNestJsonNode& shape)
{
    Polygon polygon;
    ForEachRing(shape, [&polygon](Ring&& ring) { polygon.push_back(std::move(ring)); });
    return polygon;
}

/// Nesting takes an arc that ends off its circle: a straight line leads from the circle to the end.
void ZORNestShapeReader::CheckCircle(const ZORNestJsonNode& node, Point start, const Segment& arc)
{
    const double radius = std::hypot(start.x - arc.centre.x, start.y - arc.centre.y);
    const double distance = std::hypot(arc.end.x - arc.centre.x, arc.end.y - arc.centre.y);
    if (!(radius > 0) || std::abs(distance - radius) > kArcTolerance * radius)
        node.Refuse(tr("end of an arc is not on its circle"));
}

/// ["A", x, y, centre x, centre y, "ccw" or "cw"].
void ZORNestShapeReader::ReadArc(const ZORNestJsonNode& node, Segment& segment)
{
    segment.centre = ReadPoint(node, 3);
    const QJsonArray values = node.GetList();
    const QString turn = values.size() > 5 ? node.GetElement(values, 5).GetText({}) : QString();
    segment.counterClockwise = turn == u"ccw";
    if (!segment.counterClockwise && turn != u"cw") {
        node.Refuse(tr("an arc ends with \"ccw\" or \"cw\""),
                    tr("'%1' is no direction of an arc").arg(turn.left(kQuotedLength)));
    }
}

/// ["L", x, y] or an arc.
ZORNestSolver::Segment ZORNestShapeReader::ReadSegment(const ZORNestJsonNode& node, Point start)
{
    const QJsonArray values = node.GetList();
    const QString type = values.isEmpty() ? QString() : node.GetElement(values, 0).GetText({});
    const bool isKnown = type == u"A" || type == u"L";
    Segment segment;
    if (isKnown || !IsTranslation(node))
        segment.end = ReadPoint(node, 1);
    if (!isKnown) {
        node.Refuse(tr("a segment begins with \"L\" or \"A\""),
                    tr("'%1' is no segment").arg(type.left(kQuotedLength)));
    }
    segment.isArc = type == u"A";
    if (segment.isArc)
        ReadArc(node, segment);
    if (segment.isArc && IsTranslation(node))
        CheckCircle(node, start, segment);
    return segment;
}

Contour ZORNestShapeReader::ReadContour(const ZORNestJsonNode& node)
{
    Contour contour;
    contour.start = ReadPoint(node["start"]);
    node["segs"].ForEach("segment", [&contour](const ZORNestJsonNode& segment) {
        const Point start = contour.segments.empty() ? contour.start : contour.segments.back().end;
        contour.segments.push_back(ReadSegment(segment, start));
    });
    return contour;
}

void ZORNestShapeReader::ReadContours(const ZORNestJsonNode& shape, std::vector<Contour>& contours)
{
    if (shape.IsAbsent() && !IsTranslation(shape))
        shape.Refuse(tr("is missing"));
    const QString type =
        shape["type"].GetText(IsTranslation(shape) ? QString() : QStringLiteral("simple_polygon"));
    if (type == u"path") {
        shape["contours"].ForEach(
            "contours", [&contours](const ZORNestJsonNode& node) { contours.push_back(ReadContour(node)); });
    } else if (type == u"simple_polygon" || type == u"polygon") {
        ForEachRing(shape,
                    [&contours](const Ring& ring) { contours.push_back(ZORNestSolver::MakeContour(ring)); });
    } else {
        shape["type"].Refuse(tr("must be \"simple_polygon\", \"polygon\" or \"path\""),
                             tr("shape of unknown type '%1'").arg(type.left(kQuotedLength)));
    }
}
