// State of a visual object that its environment shares.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QPointer>

class ZORVisVirtualObject::Private
{
public:
    QPointer<QObject> owner;
    std::unique_ptr<ZORVisRep> rep;
    ZORVisEnvironment* environment = nullptr; // not owned; the one that lists the object
    quint64 place = 0;                        // key in the list of the environment
    QPointer<const ZORGeoGeometry> followed;
    QMetaObject::Connection geometryChanged; // of the geometry that the representation follows
};
