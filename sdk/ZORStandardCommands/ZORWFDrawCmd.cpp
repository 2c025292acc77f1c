#include "ZORWFDrawCmd.h"

#include "ZORStdObjects.h"

#include <ZORCommand/ZORCmdPickRequest.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceSmoother.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <memory>

namespace {

QList<ZORMathPoint> PointsOf(const QList<ZORGeoLocationOnSurface>& locations)
{
    QList<ZORMathPoint> points;
    for (const ZORGeoLocationOnSurface& location : locations)
        points.append(location.point);
    return points;
}

// Hands the geometry to its container.
template<class Geometry>
void Register(std::unique_ptr<Geometry> geometry, const QString& name)
{
    geometry->setObjectName(name);
    geometry->Initialize();
    geometry.release();
}

} // namespace

ZORWFDrawCmd::ZORWFDrawCmd(QObject* parent)
    : ZORCmdCommand(parent, Silent, OneStep)
{
}

ZORWFDrawCmd::~ZORWFDrawCmd() = default;

bool ZORWFDrawCmd::IsMethod(const char* method) const
{
    return property("method").toString() == QLatin1String(method);
}

void ZORWFDrawCmd::Start()
{
    ZORFeatEnvironment* const environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!environment)
        throw ZORSysException(tr("there is no current environment"));
    m_container = environment->GetContainer();
    m_request = new ZORCmdPickRequest(ZORCmdPickRequest::SurfaceLocations, {}, this);
    m_request->SetExtent(ZORCmdPickRequest::Extent::Sequence);
    m_request->SetFilter([container = m_container](const ZORGeoGeometry& object) {
        return object.GetContainer() == container && ZORFeatShapeOf<ZORGeoSurface>(&object);
    });
    connect(m_request, &ZORCmdPickRequest::Picked, this, &ZORWFDrawCmd::OnPicked);
    connect(m_request, &ZORCmdPickRequest::TakenBack, this, &ZORWFDrawCmd::OnTakenBack);
    connect(m_request, &ZORCmdPickRequest::Completed, this, &ZORWFDrawCmd::OnCompleted);
    connect(m_request, &ZORCmdPickRequest::Canceled, this, &ZORWFDrawCmd::FinishLater);
    connect(m_container, &ZORGeoContainer::GeometryAboutToBeRemoved, this, &ZORWFDrawCmd::OnAboutToBeRemoved);
    connect(environment, &ZORFeatEnvironment::AboutToBeDestroyed, m_request, &ZORCmdPickRequest::Cancel);
    Show();
    m_request->Start();
}

void ZORWFDrawCmd::OnPicked(const ZORCmdPick& pick)
{
    // The second click of a double click.
    if (!m_clicks.isEmpty() && m_clicks.constLast().point == pick.location.point)
        return;
    if (!m_clicks.isEmpty() && !IsMethod("CreatePoints"))
        m_paths.append(FindPath(m_clicks.constLast(), pick.location));
    m_clicks.append(pick.location);
    Show();
    if (IsMethod("CreateLine") && m_clicks.size() == 2)
        m_request->Complete();
}

void ZORWFDrawCmd::OnTakenBack()
{
    if (!m_clicks.isEmpty())
        m_clicks.removeLast();
    if (!m_paths.isEmpty())
        m_paths.removeLast();
    Show();
}

void ZORWFDrawCmd::OnCompleted()
{
    FinishLater(); // first: creating may throw
    const ZORFeatShowNew show(m_container);
    Create();
}

// Locations do not keep their surface alive.
void ZORWFDrawCmd::OnAboutToBeRemoved(const ZORGeoGeometry* geometry)
{
    const bool isUsed = std::any_of(m_clicks.begin(), m_clicks.end(), [geometry](const auto& location) {
        return static_cast<const QObject*>(location.surface) == geometry;
    });
    if (isUsed)
        m_request->Cancel();
}

void ZORWFDrawCmd::Show()
{
    const QString keys = tr("Return ends, Backspace takes the last click back, Escape cancels.");
    if (m_clicks.isEmpty())
        m_request->SetPrompt(tr("Click a location on a surface. Escape cancels."));
    else if (IsMethod("CreateLine"))
        m_request->SetPrompt(
            tr("Click the end of the line. Backspace takes the start back, Escape cancels."));
    else
        m_request->SetPrompt(tr("Click the next location. %1").arg(keys));
    QList<QList<ZORMathPoint>> preview;
    for (const Path& path : std::as_const(m_paths))
        preview.append(PointsOf(path.locations));
    if (m_paths.isEmpty()) {
        for (const ZORGeoLocationOnSurface& click : std::as_const(m_clicks))
            preview.append({click.point});
    }
    m_request->SetPreview(preview);
}

ZORWFDrawCmd::Path ZORWFDrawCmd::FindPath(const ZORGeoLocationOnSurface& from,
                                          const ZORGeoLocationOnSurface& to)
{
    if (from.surface == to.surface) {
        try {
            return {ZORGeoCurveOnSurfaceSmoother::Connect({from, to}), true};
        } catch (const ZORSysException&) {
            // The two are on separate parts of the surface.
        }
    }
    return {{from, to}, false};
}

void ZORWFDrawCmd::Create() const
{
    if (IsMethod("CreatePoints"))
        CreatePoints();
    else if (m_clicks.size() > 1)
        CreateCurve();
}

void ZORWFDrawCmd::CreatePoints() const
{
    for (const ZORGeoLocationOnSurface& click : m_clicks)
        Register(std::make_unique<ZORGeoPointOnSurface>(click), ZORStdUniqueName(*m_container, tr("Point")));
}

void ZORWFDrawCmd::CreateCurve() const
{
    Locations all{m_clicks.constFirst()};
    for (const Path& path : m_paths) {
        // Its first location names the triangle of the segment that follows.
        all.removeLast();
        all.append(path.locations);
    }
    const QString name = ZORStdUniqueName(*m_container, IsMethod("CreateLine") ? tr("Line") : tr("Polyline"));
    const bool isOnOneSurface =
        std::all_of(m_paths.begin(), m_paths.end(), [](const Path& path) { return path.isOnSurface; });
    if (isOnOneSurface)
        Register(std::make_unique<ZORGeoCurveOnSurface>(all, false), name);
    else
        Register(std::make_unique<ZORGeoPolyline>(m_container, ZORMathSetOfPoints(PointsOf(all)), false),
                 name);
}
