#include "ZORVisVirtualObject.h"

#include "scene/ZORVisVirtualObject_p.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisEnvironment.h>

ZORVisVirtualObject::ZORVisVirtualObject(const ZORVisEnvironment* environment, QObject* owner)
    : d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(environment, owner);
    d->owner = owner;
}

ZORVisVirtualObject::~ZORVisVirtualObject()
{
    if (d->environment)
        d->environment->Remove(this);
}

void ZORVisVirtualObject::SetRep(ZORVisRep* rep)
{
    ZOR_TRACE_CALL(rep);
    if (rep == d->rep.get())
        return;
    d->rep.reset(rep);
    if (d->environment)
        emit d->environment->ObjectChanged(this);
}

void ZORVisVirtualObject::FollowGeometry(const ZORGeoGeometry* geometry, const RepMaker& make)
{
    disconnect(d->geometryChanged);
    d->followed = geometry;
    if (geometry)
        d->geometryChanged =
            connect(geometry, &ZORGeoGeometry::ShapeChanged, this, [this, make] { SetRep(make()); });
}

const ZORGeoGeometry* ZORVisVirtualObject::GetFollowedGeometry() const
{
    return d->followed;
}

ZORVisRep* ZORVisVirtualObject::GetRep() const
{
    return d->rep.get();
}

QObject* ZORVisVirtualObject::GetOwner() const
{
    return d->owner;
}

ZORVisEnvironment* ZORVisVirtualObject::GetEnvironment() const
{
    return d->environment;
}
