#include "ZORVisDrawing_p.h"
#include "ZORVisLineData_p.h"
#include "ZORVisMeshData_p.h"

#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kHighlightWidth = 2; // device independent pixels more than usual

QColor Mix(const QColor& usual, const QColor& highlight, double mixing)
{
    const auto mix = [mixing](int a, int b) { return int(std::lround(a + mixing * (b - a))); };
    return {mix(usual.red(), highlight.red()), mix(usual.green(), highlight.green()),
            mix(usual.blue(), highlight.blue()), usual.alpha()};
}

// Surfaces keep some of their own color, lines and points are too thin for that.
std::shared_ptr<const ZORVisRepItem> Highlighted(const ZORVisRepItem& item, const QColor& color,
                                                 double mixing)
{
    auto highlighted = std::make_shared<ZORVisRepItem>(item);
    const bool hasMesh =
        std::any_of(item.primitives.begin(), item.primitives.end(),
                    [](const auto& primitive) { return primitive->kind == ZORVisPrimitiveKind::Mesh; });
    ZORVisOptions& options = highlighted->options;
    options.SetColor(Mix(item.options.GetDrawnColor(), color, hasMesh ? mixing : 1));
    if (!hasMesh)
        options.SetLineThickness(item.options.GetDrawnThickness() + kHighlightWidth);
    return highlighted;
}

} // namespace

ZORVisDrawObject::ZORVisDrawObject(const ZORVisRep* rep, ZORVisVirtualObject* drawnFor)
    : object(drawnFor)
    , key(drawnFor ? drawnFor->GetOwner() : nullptr)
{
    if (!rep)
        return;
    items = rep->GetItems();
    box = rep->GetBoundingBox();
    m_usualItems = items;
    for (const auto& item : items) {
        ZORVisForEach<ZORVisMeshData, ZORVisPrimitiveKind::Mesh>(
            *item, [this](const ZORVisMeshData& mesh) { size += mesh.corners.size(); });
        ZORVisForEach<ZORVisLineData, ZORVisPrimitiveKind::Lines>(
            *item, [this](const ZORVisLineData& lines) { size += lines.points.size(); });
    }
}

void ZORVisDrawObject::SetHighlight(const QColor& color, double mixing)
{
    const ZORSysApiTracePause pause; // the options are the scene's own
    items = m_usualItems;
    if (!color.isValid())
        return;
    for (auto& item : items)
        item = Highlighted(*item, color, mixing);
}
