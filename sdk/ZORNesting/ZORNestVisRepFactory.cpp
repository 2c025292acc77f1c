#include "ZORNestVisRepFactory.h"

#include "picture/ZORNestFill_p.h"
#include "picture/ZORNestLabelPlace_p.h"
#include "picture/ZORNestLayerLook_p.h"

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

constexpr double kParts = 50000; // of the result's size: how far polylines may lie off arcs
const QColor kSheetColor(0xb0, 0xb4, 0xba);
const QColor kLabelColor(0xf2, 0xf4, 0xf7);
const QColor kFillColor(0x34, 0x4a, 0x63);
const QColor kMirroredFillColor(0x5a, 0x46, 0x63);

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

    QList<ZORMathSetOfPoints> AddSegment(const Segment& segment);
    void AddLabel(const ZORNestResultItem& item, const QList<ZORMathSetOfPoints>& outlines,
                  const QList<ZORMathSetOfPoints>& drawn);
    void AddChain(const Look& look, const ZORMathSetOfPoints& points);

    const ZORNestVisOptions m_options;
    const double m_tolerance;
    std::map<Look, ZORMathSetOfPoints> m_lines; // chains with an infinite point between them
    std::map<bool, ZORMathSetOfPoints> m_fills; // by mirroring
};

void Drawing::AddChain(const Look& look, const ZORMathSetOfPoints& points)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    ZORMathSetOfPoints& chains = m_lines[look];
    if (!chains.isEmpty())
        chains.append(ZORMathPoint(kInfinity, kInfinity, kInfinity));
    chains.append(points);
}

void Drawing::AddSheet(const ZORMathBoundingBox& sheet)
{
    if (sheet.IsEmpty() || !m_options.IsShown(ZORNestVisOptions::Sheet))
        return;
    const ZORMathPoint a = sheet.GetLowerPoint();
    const ZORMathPoint b = sheet.GetUpperPoint();
    AddChain({-1, 1, ZORVisOptions::Solid, kSheetColor.rgba()}, {a,
                                                                 {b.GetX(), a.GetY(), a.GetZ()},
                                                                 {b.GetX(), b.GetY(), a.GetZ()},
                                                                 {a.GetX(), b.GetY(), a.GetZ()},
                                                                 a});
}

// Returns the chains that were added.
QList<ZORMathSetOfPoints> Drawing::AddSegment(const Segment& segment)
{
    const ZORNestLayerLook& layer = ZORNestLayerLook::Of(segment.GetLayer());
    const bool isText = segment.GetType() == Segment::Text;
    if (!m_options.IsShown(layer.filter) || (isText && !m_options.IsShown(ZORNestVisOptions::Texts)))
        return {};
    const QColor color = segment.GetColor().isValid() ? segment.GetColor() : layer.color;
    const int ownStyle = segment.GetLineStyle();
    const bool hasStyle = ownStyle > 0 && ownStyle < ZORVisOptions::lineStyleCount;
    const Look look =
        isText ? Look{layer.layer, 1, ZORVisOptions::Solid, color.rgba()}
               : Look{layer.layer, layer.thickness, hasStyle ? ownStyle : int(layer.lineStyle), color.rgba()};
    const QList<ZORMathSetOfPoints> chains =
        isText ? StrokesOf(segment) : QList<ZORMathSetOfPoints>{segment.GetPoints(m_tolerance)};
    for (const ZORMathSetOfPoints& chain : chains)
        AddChain(look, chain);
    return chains;
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

// The name stands within the area, as near to the centre of mass of the largest shape as it has room; where it
// has none it stands on that centre.
void Drawing::AddLabel(const ZORNestResultItem& item, const QList<ZORMathSetOfPoints>& outlines,
                       const QList<ZORMathSetOfPoints>& drawn)
{
    const ZORMathBoundingBox box = BoxOf(item);
    if (box.IsEmpty() || item.GetName().isEmpty())
        return;
    const ZORNestResultShape* largest = item.GetShapes().constFirst();
    for (const ZORNestResultShape* shape : item.GetShapes()) {
        if (shape->GetArea() > largest->GetArea())
            largest = shape;
    }
    ZORVisVectorText label;
    label.SetFont(FontOf({}));
    label.SetAnchor(ZORVisVectorText::MiddleCenter);
    label.SetText(item.GetName());
    label.SetTextSize(1);
    ZORMathBoundingBox unit;
    for (const ZORMathSetOfPoints& stroke : label.GetPolylines()) {
        for (const ZORMathPoint& point : stroke)
            unit.Add(point);
    }
    const ZORMathVector room = box.GetUpperPoint() - box.GetLowerPoint();
    const ZORMathVector needed = unit.GetUpperPoint() - unit.GetLowerPoint();
    const double width = std::max(1.0, needed.GetX());
    const double height = std::max(1.0, needed.GetY());
    const double size = std::min(0.6 * room.GetX() / width, 0.3 * room.GetY() / height);
    const ZORMathPoint center = largest->GetArea() > 0 ? largest->GetCenterOfMass() : box.GetCenter();
    // Some air around it.
    const auto place = ZORNestLabelPlace(box, outlines, drawn)
                           .Find(center, (width + 0.4) * size, (height + 0.4) * size)
                           .value_or(ZORNestLabelPlace::Place{center, 1});
    ZORMathPlane plane;
    plane.SetOrigin(place.center);
    label.SetPlane(plane);
    label.SetTextSize(size * place.scale);
    for (const ZORMathSetOfPoints& stroke : label.GetPolylines())
        AddChain({1000, 1.5, ZORVisOptions::Solid, kLabelColor.rgba()}, stroke);
}

void Drawing::AddItem(const ZORNestResultItem& item)
{
    const bool hasFill = m_options.IsShown(ZORNestVisOptions::Fill);
    const bool hasLabel = m_options.IsShown(ZORNestVisOptions::Labels);
    QList<ZORMathSetOfPoints> outlines;
    if (hasFill || hasLabel) {
        for (const ZORNestResultShape* shape : item.GetShapes())
            outlines += ClosedChainsOf(*shape, m_tolerance);
    }
    if (hasFill)
        m_fills[item.IsMirrored()].append(ZorNestFill(outlines));
    QList<ZORMathSetOfPoints> drawn;
    for (const ZORNestResultShape* shape : item.GetShapes()) {
        for (const Segment& segment : shape->GetSegments())
            drawn += AddSegment(segment);
    }
    if (hasLabel)
        AddLabel(item, outlines, drawn);
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
        options.SetColor(isMirrored ? kMirroredFillColor : kFillColor);
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
    Drawing drawing(options, BoxOf(result).GetDiagonal() / kParts);
    drawing.AddSheet(result.GetSheet());
    for (const ZORNestResultItem* item : result.GetItems())
        drawing.AddItem(*item);
    return drawing.CreateRep();
}
