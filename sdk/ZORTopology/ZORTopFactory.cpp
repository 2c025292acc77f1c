#include "ZORTopFactory.h"

#include "ZORTopProjection_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <QPointer>

class ZORTopFactory::Private
{
public:
    QPointer<ZORGeoContainer> container; // not owned
};

ZORTopFactory::ZORTopFactory(ZORGeoContainer* container)
    : d(new Private{container})
{
    ZOR_TRACE_CALL(container);
}

ZORTopFactory::~ZORTopFactory() = default;

ZORTopBody* ZORTopFactory::CreateCurve(const ZORGeoCurve* curve, double tolerance)
{
    ZOR_TRACE_CALL(curve, tolerance);
    if (!curve)
        throw ZORSysException(tr("curve is null"));
    return Create(curve, tolerance);
}

ZORTopBody* ZORTopFactory::CreateSurface(const ZORGeoSurface* surface, double tolerance)
{
    ZOR_TRACE_CALL(surface, tolerance);
    if (!surface)
        throw ZORSysException(tr("surface is null"));
    return Create(surface, tolerance);
}

ZORTopBody* ZORTopFactory::Project(const ZORTopBody* support, const ZORTopBody* projected)
{
    ZOR_TRACE_CALL(support, projected);
    if (!support)
        throw ZORSysException(tr("support is null"));
    if (!projected)
        throw ZORSysException(tr("projected body is null"));
    RequireContainer();
    const int dimension = projected->GetDimension();
    const auto* const surface = qobject_cast<const ZORGeoSurface*>(support->GetGeometry());
    if (support->GetDimension() != 2 || !surface || dimension < 0 || dimension > 1)
        return nullptr;

    ZORTopProjection projection(*surface);
    if (!projection.Run(*projected))
        return nullptr;
    // Not make_unique: the constructor is for the factory only.
    std::unique_ptr<ZORTopBody> body(
        new ZORTopBody(d->container, projection.GetStructure(), projection.GetParts()));
    body->Initialize();
    projection.Release();
    return body.release();
}

void ZORTopFactory::RequireContainer() const
{
    if (!d->container)
        throw ZORSysException(tr("geometry has no container"));
}

ZORTopBody* ZORTopFactory::Create(const ZORGeoGeometry* geometry, double tolerance)
{
    RequireContainer();
    auto body = std::make_unique<ZORTopBody>(d->container, geometry, tolerance);
    if (body->GetDimension() == ZORTopBody::EmptyDimension)
        return nullptr;
    body->Initialize();
    return body.release();
}
