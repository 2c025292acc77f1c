#include "ZORDebugVizContainer.h"

#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORMathematics/ZORMathFunctions.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <QColor>

#include <algorithm>
#include <vector>

namespace {

/// The code, or 0 where it is none of \a count codes.
template<class Enum>
Enum ToCode(int code, int count)
{
    return static_cast<Enum>(code >= 0 && code < count ? code : 0);
}

QColor ToColor(unsigned r, unsigned g, unsigned b)
{
    const auto clamped = [](unsigned value) { return static_cast<int>(std::min(value, 255U)); };
    return {clamped(r), clamped(g), clamped(b)};
}

bool AreFinite(const ZORMathSetOfPoints& points, qsizetype first, qsizetype count)
{
    return first + count <= points.size()
           && std::all_of(points.cbegin() + first, points.cbegin() + first + count,
                          [](const ZORMathPoint& point) { return point.IsFinite(); });
}

/// Whether some \a count neighbouring points, starting at a multiple of \a step, are finite.
bool HasFiniteGroup(const ZORMathSetOfPoints& points, qsizetype count, qsizetype step)
{
    for (qsizetype first = 0; first + count <= points.size(); first += step) {
        if (AreFinite(points, first, count))
            return true;
    }
    return false;
}

} // namespace

class ZORDebugVizContainer::Private
{
public:
    std::vector<std::unique_ptr<ZORDebugVizObject>> objects;
};

/// Primitives of the object that is being added.
class ZORDebugVizContainer::Drawing
{
public:
    Drawing(unsigned r, unsigned g, unsigned b, const QString& label)
        : m_label(label)
    {
        options.SetColor(ToColor(r, g, b));
    }

    void Add(const ZORVisPrimitive* primitive) { m_primitives.append(primitive); }

    void AddText(const ZORMathPoint& point, int anchor)
    {
        if (m_label.isEmpty() || !point.IsFinite())
            return;
        using Text = ZORVisTextPrimitive;
        Add(new Text(m_label, point, ToCode<Text::AnchorLocation>(anchor, Text::UpperRight + 1),
                     Text::FixedSize));
    }

    /// Labels the first finite point.
    void AddText(const ZORMathSetOfPoints& points)
    {
        const auto point = std::find_if(points.cbegin(), points.cend(),
                                        [](const ZORMathPoint& candidate) { return candidate.IsFinite(); });
        if (point != points.cend())
            AddText(*point, ZORVisTextPrimitive::LowerLeft);
    }

    void Finish()
    {
        std::unique_ptr<ZORVisRep> rep;
        if (!m_primitives.isEmpty())
            rep = std::make_unique<ZORVisRepGraphics>(m_primitives, options);
        GetContainer()->d->objects.push_back(std::make_unique<ZORDebugVizObject>(std::move(rep), m_label));
    }

    ZORVisOptions options;

private:
    QList<const ZORVisPrimitive*> m_primitives; // the representation's at the end
    QString m_label;
};

ZORDebugVizContainer::ZORDebugVizContainer()
    : d(std::make_unique<Private>())
{
}

ZORDebugVizContainer::~ZORDebugVizContainer() = default;

ZORDebugVizContainer* ZORDebugVizContainer::GetContainer()
{
    static ZORDebugVizContainer container;
    return &container;
}

int ZORDebugVizContainer::GetNumObjects() const
{
    return static_cast<int>(d->objects.size());
}

ZORDebugVizObject* ZORDebugVizContainer::GetObject(int index) const
{
    ZOR_TRACE_CALL(index);
    return index >= 0 && index < GetNumObjects() ? d->objects[static_cast<std::size_t>(index)].get()
                                                 : nullptr;
}

void ZORDebugVizContainer::RemoveAllObjects()
{
    ZOR_TRACE_CALL();
    d->objects.clear();
}

void ZORDebugVizContainer::AddPoint(const ZORMathPoint& point, unsigned r, unsigned g, unsigned b, int symbol,
                                    const QString& label, int labelAnchor)
{
    ZOR_TRACE_CALL(point, r, g, b, symbol, label, labelAnchor);
    Drawing drawing(r, g, b, label);
    drawing.options.SetPointSymbol(
        ToCode<ZORVisOptions::PointSymbol>(symbol, ZORVisOptions::pointSymbolCount));
    if (point.IsFinite())
        drawing.Add(new ZORVisPointPrimitive({point}));
    drawing.AddText(point, labelAnchor);
    drawing.Finish();
}

void ZORDebugVizContainer::AddLine(const ZORMathPoint& start, const ZORMathPoint& end, unsigned r, unsigned g,
                                   unsigned b, int style, const QString& label, int labelAnchor,
                                   int lineAnchor)
{
    ZOR_TRACE_CALL(start, end, r, g, b, style, label, labelAnchor, lineAnchor);
    Drawing drawing(r, g, b, label);
    drawing.options.SetLineStyle(ToCode<ZORVisOptions::LineStyle>(style, ZORVisOptions::lineStyleCount));
    if (start.IsFinite() && end.IsFinite())
        drawing.Add(new ZORVisPolylinePrimitive({start, end}, ZORVisPolylinePrimitive::Chain));
    drawing.AddText(lineAnchor == 0   ? start
                    : lineAnchor == 1 ? PointBetween(start, end, 0.5)
                                      : end,
                    labelAnchor);
    drawing.Finish();
}

void ZORDebugVizContainer::AddPolyline(const ZORMathSetOfPoints& points, unsigned r, unsigned g, unsigned b,
                                       int style, const QString& label, int type)
{
    ZOR_TRACE_CALL(points, r, g, b, style, label, type);
    Drawing drawing(r, g, b, label);
    drawing.options.SetLineStyle(ToCode<ZORVisOptions::LineStyle>(style, ZORVisOptions::lineStyleCount));
    const bool pairs = type == 1;
    if (HasFiniteGroup(points, 2, pairs ? 2 : 1)) {
        drawing.Add(new ZORVisPolylinePrimitive(points, pairs ? ZORVisPolylinePrimitive::Pairs
                                                              : ZORVisPolylinePrimitive::Chain));
    }
    drawing.AddText(points);
    drawing.Finish();
}

void ZORDebugVizContainer::AddTriangle(const ZORMathPoint& first, const ZORMathPoint& second,
                                       const ZORMathPoint& third, unsigned r, unsigned g, unsigned b,
                                       const QString& label, int labelAnchor)
{
    ZOR_TRACE_CALL(first, second, third, r, g, b, label, labelAnchor);
    Drawing drawing(r, g, b, label);
    const ZORMathSetOfPoints corners{first, second, third};
    if (AreFinite(corners, 0, 3))
        drawing.Add(new ZORVisTrianglePrimitive(corners));
    drawing.AddText(PointBetween(PointBetween(first, second, 0.5), third, 1.0 / 3.0), labelAnchor);
    drawing.Finish();
}

void ZORDebugVizContainer::AddTriangles(const ZORMathSetOfPoints& points, unsigned r, unsigned g, unsigned b,
                                        const QString& label)
{
    ZOR_TRACE_CALL(points, r, g, b, label);
    Drawing drawing(r, g, b, label);
    if (HasFiniteGroup(points, 3, 3))
        drawing.Add(new ZORVisTrianglePrimitive(points));
    drawing.AddText(points);
    drawing.Finish();
}

void ZORDebugVizContainer::AddLabel(const ZORMathPoint& point, unsigned r, unsigned g, unsigned b,
                                    const QString& label, int labelAnchor)
{
    ZOR_TRACE_CALL(point, r, g, b, label, labelAnchor);
    Drawing drawing(r, g, b, label);
    drawing.AddText(point, labelAnchor);
    drawing.Finish();
}
