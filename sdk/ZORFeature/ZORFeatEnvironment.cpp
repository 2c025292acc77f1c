#include "ZORFeatEnvironment.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QPointer>

class ZORFeatEnvironment::Private
{
public:
    ZORFeatContainer* container; // owned (QObject child)
};

ZORFeatEnvironment::ZORFeatEnvironment(QObject* parent)
    : ZORVisEnvironment(parent)
    , d(new Private{new ZORFeatContainer(this)})
{
    ZOR_TRACE_CALL(parent);
}

ZORFeatEnvironment::~ZORFeatEnvironment()
{
    emit AboutToBeDestroyed();
    ZORFeatEnvironmentManager* const manager = ZORFeatEnvironmentManager::GetManager();
    if (manager->GetCurrentEnvironment() == this)
        manager->ChangeTo(nullptr);

    // Drawings may look at geometries until they are gone, so they go first. A receiver of
    // ObjectRemoved() may delete others of them meanwhile.
    QList<QPointer<ZORVisVirtualObject>> objects;
    for (ZORVisVirtualObject* object : GetVirtualObjects())
        objects.append(object);
    for (const QPointer<ZORVisVirtualObject>& object : objects)
        delete object.data();
    delete d->container;
}

ZORFeatContainer* ZORFeatEnvironment::GetContainer() const
{
    return d->container;
}
