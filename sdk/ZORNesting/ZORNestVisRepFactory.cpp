#include "ZORNestVisRepFactory.h"

#include "ZORNestFill_p.h"
#include "ZORNestLayerLook_p.h"

#include <ZORMathematics/ZORMathPlane.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisRepSet.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <numbers>
#include <tuple>

namespace {

using Segment = ZORNestResultSegment;

constexpr double parts = 50000; // of the result's size: how far polylines may lie off arcs
const QColor sheetColor(0xb0, 0xb4, 0xba);
const QColor labelColor(0xf2, 0xf4, 0xf7);
const QColor fillColor(0x34, 0x4a, 0x63);
const QColor mirroredFillColor(0x5a, 0x46, 0x63);

ZORMathBoundingBox BoxOf(const ZORNestResultItem& item)
{
    ZORMathBoundingBox box;
    for (const ZORNestResultShape* shape : item.GetShapes())
        box.Add(shape->GetBoundingBox());
    return box;
}

ZORMathBoundingBox BoxOf(const ZORNestResult& result)
{
    ZORMathBoundingBox box = result.GetSheet();
    for (const ZORNestResultItem* item : result.GetItems())
        box.Add(BoxOf(*item));
    return box;
}

/// Plain strokes where no font is asked for.
ZORVisVectorFont FontOf(const QByteArray& name)
{
    return ZORVisVectorFont(name.isEmpty() ? QStringLiteral("futural") : QString::fromUtf8(name));
}

QList<ZORMathSetOfPoints> StrokesOf(const Segment& text)
{
    const double angle = text.GetTextAngle();
    ZORMathPlane plane;
    plane.SetOrigin(text.GetStartPoint());
    plane.SetDirections(text.GetTextWidth() * ZORMathVector(std::cos(angle), std::sin(angle), 0),
                        {-std::sin(angle), std::cos(angle), 0});
    ZORVisVectorText strokes;
    strokes.SetFont(FontOf(text.GetFont()));
    strokes.SetAnchor(ZORVisVectorText::Anchor(int(text.GetTextJustification())));
    strokes.SetTextSize(text.GetTextHeight());
    strokes.SetTiltAngle(text.GetTextTiltAngle() * 180 / std::numbers::pi);
    strokes.SetPlane(plane);
    strokes.SetText(text.GetText());
    return strokes.GetPolylines();
}

/// Collects lines by their look and areas by their colour.
class Drawing
{
public:
    Drawing(const ZORNestVisOptions& options, double tolerance)
        : m_options(options)
        , m_tolerance(tolerance)
    {
    }

    void AddSheet(const ZORMathBoundingBox& sheet);
    void AddItem(const ZORNestResultItem& item);
    ZORVisRep* CreateRep() const;

private:
    /// Order of drawing, thickness, line style, colour.
    using Look = std::tuple<int, double, int, QRgb>;

    void AddSegment(const Segment& segment);
    void AddFill(const ZORNestResultItem& item);
    void AddLabel(const ZORNestResultItem& item);
    void AddChain(const Look& look, const ZORMathSetOfPoints& points);

    const ZORNestVisOptions m_options;
    const double m_tolerance;
    std::map<Look, ZORMathSetOfPoints> m_lines; // chains with an infinite point between them
    std::map<bool, ZORMathSetOfPoints> m_fills; // by mirroring
};

void Drawing::AddChain(const Look& look, const ZORMathSetOfPoints& points)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    ZORMathSetOfPoints& chains = m_lines[look];
    if (!chains.isEmpty())
        chains.append(ZORMathPoint(infinity, infinity, infinity));
    chains.append(points);
}

void Drawing::AddSheet(const ZORMathBoundingBox& sheet)
{
    if (sheet.IsEmpty() || !m_options.IsShown(ZORNestVisOptions::Sheet))
        return;
    const ZORMathPoint a = sheet.GetLowerPoint();
    const ZORMathPoint b = sheet.GetUpperPoint();
    AddChain({-1, 1, ZORVisOptions::Solid, sheetColor.rgba()}, {a,
                                                                {b.GetX(), a.GetY(), a.GetZ()},
                                                                {b.GetX(), b.GetY(), a.GetZ()},
                                                                {a.GetX(), b.GetY(), a.GetZ()},
                                                                a});
}

void Drawing::AddSegment(const Segment& segment)
{
    const ZORNestLayerLook& layer = ZORNestLayerLook::Of(segment.GetLayer());
    const bool isText = segment.GetType() == Segment::Text;
    if (!m_options.IsShown(layer.filter) || (isText && !m_options.IsShown(ZORNestVisOptions::Texts)))
        return;
    const QColor color = segment.GetColor().isValid() ? segment.GetColor() : layer.color;
    const int ownStyle = segment.GetLineStyle();
    const bool hasStyle = ownStyle > 0 && ownStyle < ZORVisOptions::lineStyleCount;
    if (!isText) {
        AddChain({layer.layer, layer.thickness, hasStyle ? ownStyle : int(layer.lineStyle), color.rgba()},
                 segment.GetPoints(m_tolerance));
        return;
    }
    for (const ZORMathSetOfPoints& stroke : StrokesOf(segment))
        AddChain({layer.layer, 1, ZORVisOptions::Solid, color.rgba()}, stroke);
}

bool IsAreaBorder(const Segment& segment)
{
    const ZORNestVisOptions::Filter filter = ZORNestLayerLook::Of(segment.GetLayer()).filter;
    return segment.GetType() != Segment::Text
           && (filter == ZORNestVisOptions::Outlines || filter == ZORNestVisOptions::TabMarks);
}

/// The closed chains of a shape's outline.
QList<ZORMathSetOfPoints> ClosedChainsOf(const ZORNestResultShape& shape, double tolerance)
{
    QList<ZORMathSetOfPoints> chains;
    ZORMathSetOfPoints chain;
    const auto endChain = [&] {
        if (chain.size() > 2 && chain.first().DistanceTo(chain.last()) <= Segment::joinTolerance)
            chains.append(chain);
        chain.clear();
    };
    for (const Segment& segment : shape.GetSegments()) {
        if (!IsAreaBorder(segment))
            continue;
        const ZORMathSetOfPoints points = segment.GetPoints(tolerance);
        if (!chain.isEmpty() && !points.isEmpty()
            && chain.last().DistanceTo(points.first()) > Segment::joinTolerance)
            endChain();
        chain.append(points);
    }
    endChain();
    return chains;
}

void Drawing::AddFill(const ZORNestResultItem& item)
{
    if (!m_options.IsShown(ZORNestVisOptions::Fill))
        return;
    QList<ZORMathSetOfPoints> outlines;
    for (const ZORNestResultShape* shape : item.GetShapes())
        outlines += ClosedChainsOf(*shape, m_tolerance);
    m_fills[item.IsMirrored()].append(ZorNestFill(outlines));
}

// The name stands where the largest shape has its centre of mass.
void Drawing::AddLabel(const ZORNestResultItem& item)
{
    const ZORMathBoundingBox box = BoxOf(item);
    if (!m_options.IsShown(ZORNestVisOptions::Labels) || box.IsEmpty() || item.GetName().isEmpty())
        return;
    const ZORNestResultShape* largest = item.GetShapes().first();
    for (const ZORNestResultShape* shape : item.GetShapes()) {
        if (shape->GetArea() > largest->GetArea())
            largest = shape;
    }
    ZORMathPlane plane;
    plane.SetOrigin(largest->GetArea() > 0 ? largest->GetCenterOfMass() : box.GetCenter());
    ZORVisVectorText label;
    label.SetFont(FontOf({}));
    label.SetAnchor(ZORVisVectorText::MiddleCenter);
    label.SetPlane(plane);
    label.SetText(item.GetName());
    label.SetTextSize(1);
    ZORMathBoundingBox unit;
    for (const ZORMathSetOfPoints& stroke : label.GetPolylines()) {
        for (const ZORMathPoint& point : stroke)
            unit.Add(point);
    }
    const ZORMathVector room = box.GetUpperPoint() - box.GetLowerPoint();
    const ZORMathVector needed = unit.GetUpperPoint() - unit.GetLowerPoint();
    label.SetTextSize(std::min(0.6 * room.GetX() / std::max(1.0, needed.GetX()),
                               0.3 * room.GetY() / std::max(1.0, needed.GetY())));
    for (const ZORMathSetOfPoints& stroke : label.GetPolylines())
        AddChain({1000, 1, ZORVisOptions::Solid, labelColor.rgba()}, stroke);
}

void Drawing::AddItem(const ZORNestResultItem& item)
{
    AddFill(item);
    for (const ZORNestResultShape* shape : item.GetShapes()) {
        for (const Segment& segment : shape->GetSegments())
            AddSegment(segment);
    }
    AddLabel(item);
}

ZORVisRep* Drawing::CreateRep() const
{
    std::vector<std::unique_ptr<ZORVisRep>> reps;
    const auto add = [&reps](const ZORVisPrimitive* primitive, const ZORVisOptions& options) {
        reps.push_back(
            std::make_unique<ZORVisRepGraphics>(QList<const ZORVisPrimitive*>{primitive}, options));
    };
    for (const auto& [isMirrored, triangles] : m_fills) {
        ZORVisOptions options;
        options.SetColor(isMirrored ? mirroredFillColor : fillColor);
        add(new ZORVisTrianglePrimitive(triangles), options);
    }
    for (const auto& [look, points] : m_lines) {
        ZORVisOptions options;
        options.SetLineThickness(std::get<1>(look));
        options.SetLineStyle(ZORVisOptions::LineStyle(std::get<2>(look)));
        options.SetColor(QColor::fromRgba(std::get<3>(look)));
        add(new ZORVisPolylinePrimitive(points, ZORVisPolylinePrimitive::Chain), options);
    }
    // The set shares what these hold.
    QList<ZORVisRep*> all;
    for (const auto& rep : reps)
        all.append(rep.get());
    return new ZORVisRepSet(all);
}

} // namespace

ZORVisRep* ZORNestVisRepFactory::CreateRep(const ZORNestResult& result, const ZORNestVisOptions& options)
{
    ZOR_TRACE_CALL(result, options);
    Drawing drawing(options, BoxOf(result).GetDiagonal() / parts);
    drawing.AddSheet(result.GetSheet());
    for (const ZORNestResultItem* item : result.GetItems())
        drawing.AddItem(*item);
    return drawing.CreateRep();
}
