#include "ZORCompDrapingLayer.h"

#include "draping/ZORCompDrapingLayer_p.h"

#include <ZORComposites/ZORCompKinematicDraping.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

ZOR_GEO_REGISTER_TYPE(ZORCompDrapingLayer)

using Layer = ZORCompDrapingLayer;

namespace {

ZORGeoLocationOnSurface LocationOf(const ZORGeoGeometry* seed, const ZORGeoSurface* surface)
{
    const auto* point = ZORFeatShapeOf<ZORGeoPoint>(seed);
    if (!point)
        throw ZORSysException(Layer::tr("the seed is no point"));
    const ZORGeoLocationOnSurface location = ZORGeoOnSurface::Locate(*point, *surface);
    if (location.IsNull())
        throw ZORSysException(Layer::tr("the seed cannot be projected onto the surface"));
    return location;
}

// The cells as pairs of triangles, cut along their shorter diagonals.
std::unique_ptr<ZORGeoSurface> MakeSurface(ZORGeoContainer* container, const ZORCompDrapingNet& net)
{
    QList<ZORMathPoint> vertices;
    vertices.reserve(net.GetNodes().size());
    for (const ZORCompDrapingNode& node : net.GetNodes())
        vertices.append(node.location.point);
    QList<ZORGeoSurface::Corners> triangles;
    triangles.reserve(2 * net.GetCells().size());
    for (const ZORCompDrapingCell& cell : net.GetCells()) {
        const auto [a, b, c, d] = cell.nodes;
        if (vertices[a].DistanceTo(vertices[c]) <= vertices[b].DistanceTo(vertices[d]))
            triangles << ZORGeoSurface::Corners{a, b, c} << ZORGeoSurface::Corners{a, c, d};
        else
            triangles << ZORGeoSurface::Corners{a, b, d} << ZORGeoSurface::Corners{b, c, d};
    }
    return std::make_unique<ZORGeoSurface>(container, vertices, triangles);
}

} // namespace

Layer::ZORCompDrapingLayer(ZORFeatObject* parent)
    : ZORFeatComputedGeometry(parent)
    , d_ptr(std::make_unique<ZORCompDrapingLayerPrivate>())
{
    ZOR_TRACE_CALL(parent);
}

Layer::~ZORCompDrapingLayer() = default;

QList<ZORFeatObject*> Layer::GetInputs() const
{
    QList<ZORFeatObject*> features{GetStrategy(), qobject_cast<ZORFeatObject*>(GetSurface()),
                                   qobject_cast<ZORFeatObject*>(GetSeed()), GetRosette()};
    features.removeAll(nullptr);
    return features;
}

void Layer::SetStrategy(ZORCompStrategy* strategy)
{
    ZOR_TRACE_CALL(strategy);
    Q_D(ZORCompDrapingLayer);
    if (strategy)
        connect(strategy, &ZORCompStrategy::ParametersChanged, this, &Layer::OnInputChanged,
                Qt::UniqueConnection);
    SetInput(d->strategy, strategy);
}

void Layer::SetSurface(ZORGeoGeometry* surface)
{
    ZOR_TRACE_CALL(surface);
    SetGeometry(d_ptr->surface, surface);
}

void Layer::SetSeed(ZORGeoGeometry* seed)
{
    ZOR_TRACE_CALL(seed);
    SetGeometry(d_ptr->seed, seed);
}

void Layer::SetGeometry(ZORGeoReference<ZORGeoGeometry>& input, ZORGeoGeometry* geometry)
{
    if (input.Get() == geometry)
        return;
    auto* const feature = qobject_cast<ZORFeatObject*>(geometry);
    CheckInput(feature);
    auto* const before = qobject_cast<ZORFeatObject*>(input.Get());
    input = ZORGeoReference<ZORGeoGeometry>(geometry, this);
    ReportChange();
    Unfollow(before);
    Follow(feature);
    Update();
}

void Layer::SetRosette(ZORCompRosette* rosette)
{
    ZOR_TRACE_CALL(rosette);
    SetInput(d_ptr->rosette, rosette);
}

void Layer::SetDirection(const ZORMathVector& direction)
{
    ZOR_TRACE_CALL(direction);
    Q_D(ZORCompDrapingLayer);
    if (d->direction == direction)
        return;
    d->direction = direction;
    ReportChange();
    if (!d->rosette)
        Update();
}

ZORCompStrategy* Layer::GetStrategy() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->strategy;
}

ZORGeoGeometry* Layer::GetSurface() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->surface;
}

ZORGeoGeometry* Layer::GetSeed() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->seed;
}

ZORCompRosette* Layer::GetRosette() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->rosette;
}

ZORMathVector Layer::GetDirection() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->direction;
}

const ZORCompDrapingNet& Layer::GetNet() const
{
    if (!d_ptr->drapedSurface)
        d_ptr->net.DetachFromSurface();
    return d_ptr->net;
}

double Layer::GetShear(int cell) const
{
    Q_D(const ZORCompDrapingLayer);
    return d->net.GetCells()[cell].shear;
}

double Layer::GetFibreAngle(int cell) const
{
    Q_D(const ZORCompDrapingLayer);
    return d->net.GetCells()[cell].fibreAngle;
}

double Layer::GetMaximumShear() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->net.GetMaximumShear();
}

QList<int> Layer::GetLockedCells() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->strategy ? d->net.GetLockedCells(d->strategy->GetParameters().lockingAngle) : QList<int>();
}

bool Layer::IsComplete() const
{
    Q_D(const ZORCompDrapingLayer);
    return d->strategy && ZORFeatShapeOf(d->surface) && ZORFeatShapeOf(d->seed);
}

ZORFeatShape Layer::Compute() const
{
    const auto* surface = ZORFeatShapeOf<ZORGeoSurface>(GetSurface());
    if (!surface)
        throw ZORSysException(tr("the surface of the layer is no surface"));
    const ZORGeoLocationOnSurface seed = LocationOf(GetSeed(), surface);
    const ZORMathVector direction = GetRosette() ? GetRosette()->GetXAxis() : GetDirection();
    const ZORCompKinematicDraping draping(surface, GetStrategy()->GetParameters());
    const ZORCompDrapingNet net = draping.Run(seed, direction);

    std::unique_ptr<ZORGeoSurface> shape = MakeSurface(GetContainer(), net);
    auto body = std::make_unique<ZORTopBody>(GetContainer(), shape.get());
    d_ptr->net = net;
    d_ptr->drapedSurface = ZORGeoReference<const ZORGeoSurface>(surface, this);
    ZORGeoSurface* const geometry = shape.release();
    return {body.release(), {geometry}};
}
