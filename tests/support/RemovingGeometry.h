// Geometry that shortens its container while it is being listed.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>

#include <QPointer>

/// Deletes another geometry as soon as its class is asked for: an index that was within the range of the container
/// then gives null.
class RemovingGeometry final : public ZORGeoGeometry
{
public:
    explicit RemovingGeometry(ZORGeoContainer* container)
        : ZORGeoGeometry(container)
    {
    }

    const QMetaObject* metaObject() const override
    {
        delete other;
        return ZORGeoGeometry::metaObject();
    }

    QPointer<ZORGeoGeometry> other; // null for none
};
