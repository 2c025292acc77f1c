#include "ZORVisEnvironment.h"

#include "scene/ZORVisVirtualObject_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <map>

class ZORVisEnvironment::Private
{
public:
    std::map<quint64, ZORVisVirtualObject*> objects; // owned, by place
    quint64 nextPlace = 1;
};

ZORVisEnvironment::ZORVisEnvironment(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

ZORVisEnvironment::~ZORVisEnvironment()
{
    blockSignals(true); // receivers may be of a derived class that is gone already
    while (!d->objects.empty())
        delete d->objects.begin()->second; // takes itself out
    blockSignals(false);                   // for destroyed()
}

void ZORVisEnvironment::AddVirtualObject(ZORVisVirtualObject* object)
{
    ZOR_TRACE_CALL(object);
    if (!object || object->d->environment == this)
        return;
    if (object->d->environment)
        object->d->environment->Remove(object);
    object->d->environment = this;
    object->d->place = d->nextPlace++;
    d->objects.emplace(object->d->place, object);
    emit ObjectAdded(object);
}

QList<ZORVisVirtualObject*> ZORVisEnvironment::GetVirtualObjects() const
{
    QList<ZORVisVirtualObject*> objects;
    objects.reserve(qsizetype(d->objects.size()));
    for (const auto& [place, object] : d->objects)
        objects.append(object);
    return objects;
}

int ZORVisEnvironment::GetNumVirtualObjects() const
{
    return int(d->objects.size());
}

void ZORVisEnvironment::Remove(ZORVisVirtualObject* object)
{
    d->objects.erase(object->d->place);
    object->d->environment = nullptr;
    emit ObjectRemoved(object);
}
