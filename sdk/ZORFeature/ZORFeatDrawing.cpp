#include "ZORFeatDrawing_p.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoRangeOfCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepSet.h>

#include <utility>

namespace {

constexpr int kNetDarkness = 160; // percent, see QColor::darker()

std::unique_ptr<ZORVisRepGraphics> PartOf(const QList<const ZORVisPrimitive*>& primitives)
{
    if (primitives.isEmpty())
        return nullptr;
    return std::make_unique<ZORVisRepGraphics>(primitives, ZORVisOptions());
}

} // namespace

ZORFeatDrawing::ZORFeatDrawing(const ZORFeatSketch& sketch)
    : m_kind(sketch.kind)
    , m_makeLines(sketch.makeLines)
    , m_size(sketch.numLinePoints)
{
    const ZORSysApiTracePause pause; // drawings are nobody's calls
    QList<const ZORVisPrimitive*> curves;
    ZORMathSetOfPoints points;
    for (const ZORGeoGeometry* geometry : sketch.geometry) {
        if (const auto* const surface = qobject_cast<const ZORGeoSurface*>(geometry)) {
            m_makeSurfaces.append(ZORVisSurfacePrimitive::PrepareFor(surface));
            m_size += surface->GetNumTriangles();
        } else if (const auto* const curve = qobject_cast<const ZORGeoCurve*>(geometry)) {
            curves.append(new ZORVisPolylinePrimitive(curve, ZORGeoRangeOfCurve()));
        } else if (const auto* const point = qobject_cast<const ZORGeoPoint*>(geometry)) {
            points.append(point->GetMathPoint());
        }
    }
    m_curves = PartOf(curves);
    if (!points.isEmpty())
        m_points = PartOf({new ZORVisPointPrimitive(points)});
}

void ZORFeatDrawing::Complete()
{
    const ZORSysApiTracePause pause;
    if (m_makeLines) {
        QList<const ZORVisPrimitive*> lines;
        const QList<ZORMathSetOfPoints> chains = m_makeLines();
        for (const ZORMathSetOfPoints& chain : chains)
            lines.append(new ZORVisPolylinePrimitive(chain, ZORVisPolylinePrimitive::Chain));
        m_net = PartOf(lines);
        m_makeLines = nullptr; // with the values that it holds
    }
    QList<const ZORVisPrimitive*> surfaces;
    for (const auto& makeSurface : std::as_const(m_makeSurfaces))
        surfaces.append(makeSurface().release());
    m_surfaces = PartOf(surfaces);
    m_makeSurfaces.clear();
    if (m_surfaces && IsLarge())
        m_surfaces->Prepare();
}

std::unique_ptr<ZORVisRep> ZORFeatDrawing::MakeRep(const ZORFeatStyle& style) const
{
    const ZORSysApiTracePause pause;
    const bool hasNet = m_net != nullptr;
    ZORVisOptions options = style.GetOptions();
    ZORVisOptions netOptions = options;
    netOptions.SetColor(options.GetDrawnColor().darker(kNetDarkness));
    if (hasNet) // in place of the edges of the triangles
        options.SetDisplay(ZORVisOptions::Shaded);
    std::vector<Part> parts;
    const auto add = [&parts](const Part& part, const ZORVisOptions& partOptions) {
        if (part)
            parts.push_back(part->WithOptions(partOptions));
    };
    if (!hasNet || style.GetDisplay() != ZORVisOptions::Wireframe)
        add(m_surfaces, options);
    add(m_curves, options);
    add(m_points, options);
    if (style.GetDisplay() != ZORVisOptions::Shaded)
        add(m_net, netOptions);
    QList<ZORVisRep*> reps;
    for (const Part& part : parts)
        reps.append(part.get());
    return std::make_unique<ZORVisRepSet>(reps);
}
