#include "ZORNestBenchmarkJson_p.h"
#include "drawing/ZORNestDrawing_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <numbers>

namespace {

constexpr qsizetype maximumLists = 4000000; // each takes up to 300 bytes once it is read

QString Tr(const char* text)
{
    return QCoreApplication::translate("ZORNestBenchmarkJson", text);
}

class Drawer
{
public:
    Drawer(const ZORNestBenchmarkJson::Item& item, ZORNestDrawing& drawing)
        : m_item(item)
        , m_drawing(drawing)
    {
    }

    void Draw();

private:
    [[noreturn]] void Fail(const QString& what) const
    {
        throw ZORSysException(Tr("item '%1': %2").arg(m_item.name, what));
    }
    double ToNumber(const QJsonValue& value) const;
    ZORNestPlanePoint ToPoint(const QJsonArray& numbers, qsizetype first) const;
    QJsonArray ToArray(const QJsonValue& value, const char* what) const;
    void DrawPolygon(const QJsonArray& points);
    void DrawContour(const QJsonObject& contour);
    void DrawArc(const QJsonArray& segment, ZORNestPlanePoint start, ZORNestPlanePoint end);
    void EndChain();

    const ZORNestBenchmarkJson::Item& m_item;
    ZORNestDrawing& m_drawing;
};

double Drawer::ToNumber(const QJsonValue& value) const
{
    if (!value.isDouble())
        Fail(Tr("coordinate is no number"));
    return value.toDouble();
}

ZORNestPlanePoint Drawer::ToPoint(const QJsonArray& numbers, qsizetype first) const
{
    return {ToNumber(numbers.at(first)), ToNumber(numbers.at(first + 1))};
}

QJsonArray Drawer::ToArray(const QJsonValue& value, const char* what) const
{
    if (!value.isArray())
        Fail(Tr("'%1' is no list").arg(QLatin1String(what)));
    return value.toArray();
}

void Drawer::EndChain()
{
    if (!m_drawing.EndChain(QStringLiteral("outline")))
        Fail(Tr("outline without extent, or out of range"));
}

// The first point may be repeated at the end.
void Drawer::DrawPolygon(const QJsonArray& points)
{
    m_drawing.BeginChain({}, {});
    ZORNestPlanePoint first, last;
    for (qsizetype i = 0; i < points.size(); ++i) {
        const ZORNestPlanePoint next = ToPoint(ToArray(points.at(i), "point"), 0);
        if (i == 0)
            first = next;
        else
            m_drawing.AddLine(last, next);
        last = next;
    }
    m_drawing.AddLine(last, first);
    EndChain();
}

void Drawer::DrawArc(const QJsonArray& segment, ZORNestPlanePoint start, ZORNestPlanePoint end)
{
    const ZORNestPlanePoint center = ToPoint(segment, 3);
    const QString turn = segment.at(5).toString();
    if (turn != u"ccw" && turn != u"cw")
        Fail(Tr("'%1' is no direction of an arc").arg(turn.left(40)));
    const double radius = center.DistanceTo(start);
    if (!(radius > 0)
        || std::abs(center.DistanceTo(end) - radius) > ZORNestBenchmarkJson::ArcTolerance * radius)
        Fail(Tr("end of an arc is not on its circle"));
    const ZORNestPiece arc{start, end, center, turn == u"ccw" ? 1 : -1};
    const ZORNestPlanePoint u = start - center;
    m_drawing.AddConic({center, u, u.GetNormal(), 0, arc.turn * arc.GetSweep()}, &start, &end);
}

void Drawer::DrawContour(const QJsonObject& contour)
{
    const ZORNestPlanePoint first = ToPoint(ToArray(contour.value(QLatin1String("start")), "start"), 0);
    ZORNestPlanePoint last = first;
    m_drawing.BeginChain({}, {});
    const QJsonArray segments = ToArray(contour.value(QLatin1String("segs")), "segs");
    for (const QJsonValue& value : segments) {
        const QJsonArray segment = ToArray(value, "segment");
        const QString kind = segment.at(0).toString();
        if (kind != u"L" && kind != u"A")
            Fail(Tr("'%1' is no segment").arg(kind.left(40)));
        const ZORNestPlanePoint next = ToPoint(segment, 1);
        if (kind == u"L")
            m_drawing.AddLine(last, next);
        else
            DrawArc(segment, last, next);
        last = next;
    }
    m_drawing.AddLine(last, first);
    EndChain();
}

void Drawer::Draw()
{
    const QString type = m_item.shape.value(QLatin1String("type")).toString();
    const QJsonValue data = m_item.shape.value(QLatin1String("data"));
    if (type == u"simple_polygon") {
        DrawPolygon(ToArray(data, "data"));
    } else if (type == u"polygon") {
        const QJsonObject object = data.toObject();
        DrawPolygon(ToArray(object.value(QLatin1String("outer")), "outer"));
        const QJsonArray holes = object.value(QLatin1String("inner")).toArray();
        for (const QJsonValue& hole : holes)
            DrawPolygon(ToArray(hole, "inner"));
    } else if (type == u"path") {
        const QJsonArray contours = ToArray(m_item.shape.value(QLatin1String("contours")), "contours");
        for (const QJsonValue& contour : contours)
            DrawContour(contour.toObject());
    } else {
        Fail(Tr("shape of unknown type '%1'").arg(type.left(40)));
    }
}

} // namespace

QList<ZORNestBenchmarkJson::Item> ZORNestBenchmarkJson::Read(const QByteArray& bytes)
{
    if (bytes.count('[') + bytes.count('{') > maximumLists)
        throw ZORSysException(Tr("JSON has more than %1 lists and objects").arg(maximumLists));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw ZORSysException(Tr("no JSON: %1 (byte %2)").arg(error.errorString()).arg(error.offset));
    const QJsonValue list = document.object().value(QLatin1String("items"));
    if (!list.isArray())
        throw ZORSysException(Tr("no nesting instance: 'items' is missing"));
    QList<Item> items;
    const QJsonArray array = list.toArray();
    for (qsizetype i = 0; i < array.size(); ++i) {
        const QJsonObject object = array.at(i).toObject();
        QString name = object.value(QLatin1String("name")).toString();
        if (name.isEmpty()) {
            const QJsonValue id = object.value(QLatin1String("id"));
            name = id.isDouble() ? QString::number(id.toInteger(i)) : id.toString(QString::number(i));
        }
        items.append({name, object.value(QLatin1String("shape")).toObject()});
    }
    return items;
}

void ZORNestBenchmarkJson::Draw(const Item& item, ZORNestDrawing& drawing)
{
    Drawer(item, drawing).Draw();
}
