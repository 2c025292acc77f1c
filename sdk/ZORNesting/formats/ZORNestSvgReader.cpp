#include "ZORNestSvgPath_p.h"
#include "ZORNestSvgReader_p.h"
#include "ZORNestXml_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <algorithm>

using ZORNestSolver::kDegree;
using ZORNestSolver::kFullTurn;

namespace {

constexpr double kPixel = 25.4 / 96;

// Millimetres of a length such as "210mm"; 0 for one that is relative to something else, or no length.
double ToMillimetres(QStringView text)
{
    static const struct
    {
        const char* name;
        double size;
    } units[] = {{"", kPixel}, {"px", kPixel},    {"mm", 1},        {"cm", 10},
                 {"in", 25.4}, {"pt", 25.4 / 72}, {"pc", 25.4 / 6}, {"q", 0.25}};
    ZORNestSvgNumbers numbers(text);
    double value = 0;
    if (!numbers.ReadNumber(value))
        return 0;
    const QString unit = text.sliced(numbers.GetOffset()).trimmed().toString().toLower();
    for (const auto& known : units) {
        if (unit == QLatin1String(known.name))
            return value * known.size;
    }
    return 0;
}

bool MakeTransform(QStringView name, const QList<double>& v, ZORNestPlaneMap& map)
{
    map = {};
    const qsizetype n = v.size();
    if (name == u"matrix" && n == 6) {
        map = {{v[0], v[1]}, {v[2], v[3]}, {v[4], v[5]}};
    } else if (name == u"translate" && (n == 1 || n == 2)) {
        map.origin = {v[0], n == 2 ? v[1] : 0};
    } else if (name == u"scale" && (n == 1 || n == 2)) {
        map = {{v[0], 0}, {0, v[n - 1]}, {}};
    } else if (name == u"rotate" && (n == 1 || n == 3)) {
        const ZORNestPlanePoint along{std::cos(v[0] * kDegree), std::sin(v[0] * kDegree)};
        map = {along, GetNormal(along), {}};
        if (n == 3)
            map.origin = ZORNestPlanePoint{v[1], v[2]} - map.MapVector({v[1], v[2]});
    } else if (name == u"skewX" && n == 1) {
        map.y.x = std::tan(v[0] * kDegree);
    } else if (name == u"skewY" && n == 1) {
        map.x.y = std::tan(v[0] * kDegree);
    } else {
        return false;
    }
    return true;
}

// Several of them, the last one applied first; false for what is none.
bool ParseTransforms(QStringView text, ZORNestPlaneMap& map)
{
    map = {};
    for (;;) {
        while (!text.isEmpty() && (text.front().isSpace() || text.front() == u','))
            text = text.sliced(1);
        if (text.isEmpty())
            return true;
        const qsizetype open = text.indexOf(u'(');
        const qsizetype close = text.indexOf(u')');
        if (open < 0 || close < open)
            return false;
        ZORNestSvgNumbers numbers(text.sliced(open + 1, close - open - 1));
        QList<double> values;
        double value = 0;
        while (values.size() < 7 && numbers.ReadNumber(value))
            values.append(value);
        ZORNestPlaneMap next;
        if (!numbers.IsAtEnd() || !MakeTransform(text.first(open).trimmed(), values, next))
            return false;
        map = map * next;
        text = text.sliced(close + 1);
    }
}

// What shows no curves where it stands.
bool IsHidden(QStringView name)
{
    static const char* const names[] = {"defs",   "clipPath",       "mask",   "marker",        "pattern",
                                        "symbol", "linearGradient", "filter", "style",         "metadata",
                                        "script", "title",          "desc",   "radialGradient"};
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* hidden) { return name == QLatin1String(hidden); });
}

QColor ParseColor(QStringView text, const QColor& current)
{
    const QString name = text.trimmed().toString();
    if (name.startsWith(QLatin1String("rgb("))) {
        ZORNestSvgNumbers numbers(QStringView(name).sliced(4));
        double r = 0, g = 0, b = 0;
        if (numbers.ReadNumber(r) && numbers.ReadNumber(g) && numbers.ReadNumber(b)) {
            const auto byte = [](double value) { return int(std::clamp(value, 0.0, 255.0)); };
            return QColor(byte(r), byte(g), byte(b));
        }
    }
    if (name == u"inherit" || name == u"currentColor")
        return current;
    return QColor::isValidColor(name) && name != u"none" ? QColor(name) : QColor();
}

} // namespace

ZORNestSvgReader::ZORNestSvgReader(const QByteArray& bytes, ZORNestDrawing& drawing, QStringList& report,
                                   const ZORWorkContext& context)
    : m_xml(bytes)
    , m_drawing(drawing)
    , m_report(report)
    , m_context(context)
{
    ZORNestXml::CheckMarkup(bytes, m_xml);
}

void ZORNestSvgReader::Read()
{
    const bool hasRoot = m_xml.readNextStartElement();
    ZORNestXml::CheckError(m_xml);
    if (!hasRoot || m_xml.name() != u"svg")
        throw ZORSysException(tr("no SVG file: the root element is '%1'").arg(m_xml.name()));
    State state;
    ReadRoot(state);
    ReadElements(state);
    while (!m_xml.atEnd())
        m_xml.readNext();
    ZORNestXml::CheckError(m_xml);
}

void ZORNestSvgReader::ReadRoot(State& state)
{
    m_attributes = m_xml.attributes();
    const double width = ToMillimetres(m_attributes.value(QLatin1String("width")));
    const double height = ToMillimetres(m_attributes.value(QLatin1String("height")));
    double box[4] = {0, 0, 0, 0};
    ZORNestSvgNumbers numbers(m_attributes.value(QLatin1String("viewBox")));
    const bool hasBox =
        std::all_of(std::begin(box), std::end(box), [&](double& value) { return numbers.ReadNumber(value); })
        && box[2] > 0 && box[3] > 0;
    double scale = kPixel;
    if (hasBox && (width > 0 || height > 0)) {
        // All of the box shows, in proportion.
        scale = std::min(width > 0 ? width / box[2] : HUGE_VAL, height > 0 ? height / box[3] : HUGE_VAL);
    }
    const double left = hasBox ? box[0] : 0;
    const double bottom = hasBox ? box[1] + box[3] : height / kPixel;
    state.map = {{scale, 0}, {0, -scale}, {-scale * left, scale * bottom}};
    m_report.append(tr("units: %1 mm").arg(scale));
    ApplyAttributes(state);
}

// Groups may nest deeper than the stack of a thread would bear.
void ZORNestSvgReader::ReadElements(const State& root)
{
    QList<State> groups{root};
    while (!groups.isEmpty()) {
        if (!m_xml.readNextStartElement())
            groups.removeLast();
        else if (const std::optional<State> group = ReadElement(groups.constLast()))
            groups.append(*group);
        ZORNestXml::CheckError(m_xml);
    }
}

std::optional<ZORNestSvgReader::State> ZORNestSvgReader::ReadElement(const State& parent)
{
    m_context.ThrowIfCanceled();
    const QString name = m_xml.name().toString();
    m_attributes = m_xml.attributes();
    State state = parent;
    ApplyAttributes(state);
    const bool isShown = m_attributes.value(QLatin1String("display")) != u"none"
                         && !m_attributes.value(QLatin1String("style"))
                                 .toString()
                                 .remove(u' ')
                                 .contains(QLatin1String("display:none"));
    if (isShown && (name == u"g" || name == u"a" || name == u"switch"))
        return state;
    if (isShown && !IsHidden(name) && !m_xml.name().isEmpty())
        DrawShape(name, state);
    m_xml.skipCurrentElement();
    return {};
}

void ZORNestSvgReader::ApplyAttributes(State& state)
{
    for (const QXmlStreamAttribute& attribute : std::as_const(m_attributes)) {
        const QStringView name = attribute.name();
        if (name == u"transform") {
            ZORNestPlaneMap map;
            if (ParseTransforms(attribute.value(), map))
                state.map = state.map * map;
            else
                m_drawing.Skip(tr("faulty transformation"));
        } else if (name == u"stroke") {
            state.look.color = ParseColor(attribute.value(), state.look.color);
        } else if (name == u"fill") {
            state.fill = ParseColor(attribute.value(), state.fill);
        } else if (name == u"style") {
            const QList<QStringView> declarations = attribute.value().split(u';');
            for (const QStringView declaration : declarations) {
                const qsizetype colon = declaration.indexOf(u':');
                const QStringView key = declaration.first(std::max<qsizetype>(colon, 0)).trimmed();
                if (key == u"stroke")
                    state.look.color = ParseColor(declaration.sliced(colon + 1), state.look.color);
                else if (key == u"fill")
                    state.fill = ParseColor(declaration.sliced(colon + 1), state.fill);
            }
        }
    }
    if (m_xml.name() != u"g")
        return;
    QString layer = m_attributes.value(QLatin1String("id")).toString();
    for (const QXmlStreamAttribute& attribute : std::as_const(m_attributes)) {
        if (attribute.name() == u"label")
            layer = attribute.value().toString();
    }
    if (!layer.isEmpty())
        state.look.layer = layer;
}

double ZORNestSvgReader::GetLength(const char* attribute) const
{
    return ToMillimetres(m_attributes.value(QLatin1String(attribute))) / kPixel;
}

void ZORNestSvgReader::DrawShape(QStringView name, const State& state)
{
    ZORNestLook look = state.look;
    if (!look.color.isValid())
        look.color = state.fill;
    if (name == u"path") {
        ZORNestSvgPath::Draw(m_attributes.value(QLatin1String("d")), look, state.map, m_drawing);
    } else if (name == u"rect") {
        DrawRectangle(state, look);
    } else if (name == u"circle" || name == u"ellipse") {
        const bool isCircle = name == u"circle";
        const double rx = GetLength(isCircle ? "r" : "rx");
        const double ry = GetLength(isCircle ? "r" : "ry");
        m_drawing.BeginChain(look, state.map);
        if (rx > 0 && ry > 0)
            m_drawing.AddConic({{GetLength("cx"), GetLength("cy")}, {rx, 0}, {0, ry}, 0, kFullTurn});
        m_drawing.EndChain(name.toString());
    } else if (name == u"line") {
        m_drawing.BeginChain(look, state.map);
        m_drawing.AddLine({GetLength("x1"), GetLength("y1")}, {GetLength("x2"), GetLength("y2")});
        m_drawing.EndChain(name.toString());
    } else if (name == u"polyline" || name == u"polygon") {
        DrawPoints(state, look, name == u"polygon");
    } else {
        m_drawing.Skip(name.first(std::min<qsizetype>(name.size(), 40)).toString());
    }
}

void ZORNestSvgReader::DrawRectangle(const State& state, const ZORNestLook& look)
{
    const double x = GetLength("x"), y = GetLength("y"), width = GetLength("width"),
                 height = GetLength("height");
    const bool hasRx = m_attributes.hasAttribute(QLatin1String("rx"));
    const bool hasRy = m_attributes.hasAttribute(QLatin1String("ry"));
    double rx = GetLength(hasRx ? "rx" : "ry");
    double ry = GetLength(hasRy ? "ry" : "rx");
    rx = std::clamp(rx, 0.0, std::max(0.0, width / 2));
    ry = std::clamp(ry, 0.0, std::max(0.0, height / 2));
    if (rx == 0 || ry == 0)
        rx = ry = 0;
    m_drawing.BeginChain(look, state.map);
    if (width > 0 && height > 0) {
        const double right = x + width, bottom = y + height;
        const ZORNestPlanePoint corners[][2] = {{{right - rx, y}, {right, y + ry}},
                                                {{right, bottom - ry}, {right - rx, bottom}},
                                                {{x + rx, bottom}, {x, bottom - ry}},
                                                {{x, y + ry}, {x + rx, y}}};
        ZORNestPlanePoint point = corners[3][1];
        for (const auto& [from, to] : corners) {
            m_drawing.AddLine(point, from);
            ZORNestSvgPath::AddArc(from, to, rx, ry, 0, {.isLarge = false, .isSweep = true}, m_drawing);
            point = to;
        }
    }
    m_drawing.EndChain(QStringLiteral("rect"));
}

void ZORNestSvgReader::DrawPoints(const State& state, const ZORNestLook& look, bool isClosed)
{
    ZORNestSvgNumbers numbers(m_attributes.value(QLatin1String("points")));
    ZORNestPlanePoint first, last, next;
    m_drawing.BeginChain(look, state.map);
    for (bool isFirst = true; numbers.ReadNumber(next.x) && numbers.ReadNumber(next.y); isFirst = false) {
        if (isFirst)
            first = next;
        else
            m_drawing.AddLine(last, next);
        last = next;
    }
    if (isClosed)
        m_drawing.AddLine(last, first);
    m_drawing.EndChain(isClosed ? QStringLiteral("polygon") : QStringLiteral("polyline"));
    if (!numbers.IsAtEnd())
        m_drawing.Skip(tr("rest of faulty points"));
}
