#include "ZORNestDxfEntities_p.h"
#include "ZORNestDxfText_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <QCoreApplication>

#include <algorithm>

using ZORNestSolver::kDegree;
using ZORNestSolver::kFullTurn;

namespace ZORNestDxfEntities {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestDxfEntities)
};

struct Context
{
    const ZORNestDxfRecord& record;
    const ZORNestLook& look;
    const ZORNestPlaneMap& map;
    ZORNestDrawing& drawing;

    QString GetType() const { return QString::fromLatin1(record.GetType()); }
};

void DrawLine(const Context& c)
{
    c.drawing.BeginChain(c.look, c.map);
    c.drawing.AddLine(c.record.GetPoint(10), c.record.GetPoint(11));
    c.drawing.EndChain(c.GetType());
}

// From one angle up to the other one, counter-clockwise.
double GetEndAngle(double from, double to)
{
    const double sweep = std::fmod(to - from, kFullTurn);
    return from + (sweep > 0 ? sweep : sweep + kFullTurn);
}

enum class Round { Circle, Arc };

void DrawRound(const Context& c, Round round)
{
    const bool isArc = round == Round::Arc;
    const double radius = c.record.GetNumber(40);
    const double from = isArc ? c.record.GetNumber(50) * kDegree : 0;
    const double to = isArc ? GetEndAngle(from, c.record.GetNumber(51) * kDegree) : kFullTurn;
    c.drawing.BeginChain(c.look, c.map);
    if (radius > 0)
        c.drawing.AddConic({c.record.GetPoint(10), {radius, 0}, {0, radius}, from, to});
    c.drawing.EndChain(c.GetType());
}

void DrawEllipse(const Context& c)
{
    const ZORNestPlanePoint major = c.record.GetPoint(11);
    const double ratio = c.record.GetNumber(40, 1) * (c.record.GetNumber(230, 1) < 0 ? -1 : 1);
    const double from = c.record.GetNumber(41, 0);
    double to = c.record.GetNumber(42, kFullTurn);
    to = std::abs(to - from - kFullTurn) < 1e-9 ? from + kFullTurn : GetEndAngle(from, to);
    c.drawing.BeginChain(c.look, c.map);
    if (Length(major) > 0 && ratio != 0)
        c.drawing.AddConic({c.record.GetPoint(10), major, ratio * GetNormal(major), from, to});
    c.drawing.EndChain(c.GetType());
}

void DrawLwPolyline(const Context& c)
{
    QList<Vertex> vertices;
    for (const ZORNestDxfTag& tag : c.record.GetTags()) {
        if (tag.code == 10)
            vertices.append({{ZORNestDxfRecord::ToNumber(tag), 0}, 0});
        else if (tag.code == 20 && !vertices.isEmpty())
            vertices.last().point.y = ZORNestDxfRecord::ToNumber(tag);
        else if (tag.code == 42 && !vertices.isEmpty())
            vertices.last().bulge = ZORNestDxfRecord::ToNumber(tag);
    }
    DrawVertices(vertices, c.record.GetInteger(70) & 1, c.look, c.map, c.GetType(), c.drawing);
}

bool IsUsable(const ZORNestNurbs& nurbs)
{
    const bool doCountsFit = nurbs.degree >= 1 && nurbs.degree <= ZORNestNurbs::kMaximumDegree
                             && nurbs.poles.size() > nurbs.degree
                             && nurbs.knots.size() == nurbs.poles.size() + nurbs.degree + 1
                             && (nurbs.weights.isEmpty() || nurbs.weights.size() == nurbs.poles.size());
    return doCountsFit && std::is_sorted(nurbs.knots.cbegin(), nurbs.knots.cend())
           && nurbs.knots[nurbs.degree] < nurbs.knots[nurbs.poles.size()]
           && std::all_of(nurbs.weights.cbegin(), nurbs.weights.cend(),
                          [](double weight) { return weight > 0; });
}

void DrawSpline(const Context& c)
{
    ZORNestNurbs nurbs;
    nurbs.degree = c.record.GetInteger(71, 3);
    for (const ZORNestDxfTag& tag : c.record.GetTags()) {
        if (tag.code == 40)
            nurbs.knots.append(ZORNestDxfRecord::ToNumber(tag));
        else if (tag.code == 41)
            nurbs.weights.append(ZORNestDxfRecord::ToNumber(tag));
        else if (tag.code == 10)
            nurbs.poles.append({ZORNestDxfRecord::ToNumber(tag), 0});
        else if (tag.code == 20 && !nurbs.poles.isEmpty())
            nurbs.poles.last().y = ZORNestDxfRecord::ToNumber(tag);
    }
    if (std::all_of(nurbs.weights.cbegin(), nurbs.weights.cend(), [](double weight) { return weight == 1; }))
        nurbs.weights.clear();
    c.drawing.BeginChain(c.look, c.map);
    if (IsUsable(nurbs))
        c.drawing.AddNurbs(nurbs);
    if (nurbs.poles.isEmpty())
        c.drawing.EndChain(Texts::tr("%1 without control points").arg(c.GetType()));
    else if (nurbs.degree > ZORNestNurbs::kMaximumDegree)
        c.drawing.EndChain(Texts::tr("%1 of a degree above %2")
                               .arg(c.GetType(), QString::number(ZORNestNurbs::kMaximumDegree)));
    else
        c.drawing.EndChain(c.GetType());
}

// TEXT: 72 left, center, right, aligned, middle, fit; 73 baseline, bottom, middle, top. In the order of
// ZORNestResultSegment::TextJustification.
int GetJustification(int horizontal, int vertical)
{
    if (horizontal == 4)
        return 7;
    static constexpr int kColumns[] = {0, 1, 2, 0, 1, 0};
    static constexpr int kRows[] = {0, 3, 6, 9};
    const int column = horizontal >= 0 && horizontal <= 5 ? kColumns[horizontal] : 0;
    return (vertical >= 0 && vertical <= 3 ? kRows[vertical] : 0) + column;
}

void DrawText(const Context& c)
{
    ZORNestDrawnText text;
    const int horizontal = c.record.GetInteger(72);
    const int vertical = c.record.GetInteger(c.record.Is("ATTRIB") ? 74 : 73);
    const ZORNestPlanePoint first = c.record.GetPoint(10);
    const ZORNestPlanePoint second = c.record.Has(11) ? c.record.GetPoint(11) : first;
    const bool isBetween = horizontal == 3 || horizontal == 5; // from the one point to the other
    text.start = isBetween || (horizontal == 0 && vertical == 0) ? first : second;
    text.end = isBetween ? second : text.start;
    text.text = ZORNestDxfText::GetPlainText(ZORNestDxfRecord::ToText(c.record.GetValue(1)));
    text.font = ZORNestDxfRecord::ToText(c.record.GetValue(7));
    text.height = c.record.GetNumber(40, 1);
    text.angle = c.record.GetNumber(50) * kDegree;
    text.width = c.record.GetNumber(41, 1);
    text.tilt = c.record.GetNumber(51) * kDegree;
    text.justification = GetJustification(horizontal, vertical);
    text.look = c.look;
    c.drawing.AddText(text, c.map);
}

void DrawParagraphs(const Context& c)
{
    ZORNestDrawnText text;
    QString content;
    for (const ZORNestDxfTag& tag : c.record.GetTags()) {
        if (tag.code == 1 || tag.code == 3)
            content += ZORNestDxfRecord::ToText(tag.value);
    }
    text.start = c.record.GetPoint(10);
    text.end = text.start;
    text.text = ZORNestDxfText::GetPlainParagraphs(content);
    text.font = ZORNestDxfRecord::ToText(c.record.GetValue(7));
    text.height = c.record.GetNumber(40, 1);
    const ZORNestPlanePoint direction = c.record.GetPoint(11);
    text.angle = c.record.Has(11) ? std::atan2(direction.y, direction.x) : c.record.GetNumber(50) * kDegree;
    const int attachment = std::clamp(c.record.GetInteger(71, 1), 1, 9) - 1;
    text.justification = 9 - attachment / 3 * 3 + attachment % 3;
    text.look = c.look;
    c.drawing.AddText(text, c.map);
}

} // namespace

bool GetSystem(const ZORNestDxfRecord& record, ZORNestPlaneMap& system)
{
    system = {};
    const double x = record.GetNumber(210, 0), y = record.GetNumber(220, 0), z = record.GetNumber(230, 1);
    if (z < 0)
        system.x.x = -1;
    return std::hypot(x, y) <= 1e-6 * std::abs(z);
}

QString DescribeOutOfPlane(const QString& type)
{
    return Texts::tr("%1 out of the plane").arg(type);
}

bool Draw(const ZORNestDxfRecord& record, const ZORNestLook& look, const ZORNestPlaneMap& map,
          ZORNestDrawing& drawing)
{
    // These give points of the world; the others lie in a system of their own.
    const bool isInWorld =
        record.Is("LINE") || record.Is("ELLIPSE") || record.Is("SPLINE") || record.Is("MTEXT");
    ZORNestPlaneMap system;
    const bool isFlat = GetSystem(record, system);
    const ZORNestPlaneMap ownMap = isInWorld ? map : map * system;
    const Context context{record, look, ownMap, drawing};
    if (!isFlat && !record.Is("LINE") && !record.Is("SPLINE")) {
        static const char* const known[] = {"ARC",  "CIRCLE", "ELLIPSE", "LWPOLYLINE",
                                            "TEXT", "ATTRIB", "MTEXT"};
        const bool isKnown = std::any_of(std::begin(known), std::end(known),
                                         [&](const char* type) { return record.Is(type); });
        if (isKnown)
            drawing.Skip(DescribeOutOfPlane(context.GetType()));
        return isKnown;
    }
    if (record.Is("LINE"))
        DrawLine(context);
    else if (record.Is("ARC"))
        DrawRound(context, Round::Arc);
    else if (record.Is("CIRCLE"))
        DrawRound(context, Round::Circle);
    else if (record.Is("ELLIPSE"))
        DrawEllipse(context);
    else if (record.Is("LWPOLYLINE"))
        DrawLwPolyline(context);
    else if (record.Is("SPLINE"))
        DrawSpline(context);
    else if (record.Is("TEXT") || record.Is("ATTRIB"))
        DrawText(context);
    else if (record.Is("MTEXT"))
        DrawParagraphs(context);
    else
        return false;
    return true;
}

void DrawVertices(const QList<Vertex>& vertices, bool isClosed, const ZORNestLook& look,
                  const ZORNestPlaneMap& map, const QString& what, ZORNestDrawing& drawing)
{
    drawing.BeginChain(look, map);
    for (qsizetype i = 1; i < vertices.size(); ++i)
        drawing.AddBulge(vertices[i - 1].point, vertices[i].point, vertices[i - 1].bulge);
    if (isClosed && vertices.size() > 1)
        drawing.AddBulge(vertices.constLast().point, vertices.constFirst().point, vertices.constLast().bulge);
    drawing.EndChain(what);
}

} // namespace ZORNestDxfEntities
