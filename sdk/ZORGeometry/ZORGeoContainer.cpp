#include "ZORGeoContainer.h"

#include "storage/ZORGeoContainer_p.h"
#include "storage/ZORGeoGeometry_p.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QMutex>

#include <algorithm>
#include <cstring>

namespace {

// Types of all loaded libraries, in the order of their registration. Never destroyed before the
// registrations, which are made after it.
struct TypeRegistry
{
    QMutex mutex;
    QList<const QMetaObject*> types;

    static TypeRegistry& Get()
    {
        static TypeRegistry registry;
        return registry;
    }
};

} // namespace

void ZORGeoContainerPrivate::Register(ZORGeoGeometry* geometry)
{
    if (geometry->objectName().isEmpty()) {
        const QString stem = ZORGeoContainerNames::GetStem(geometry->metaObject()->className());
        geometry->setObjectName(names.MakeNumbered(stem));
    }
    geometry->d_ptr->registeredName = geometry->objectName();
    names.Insert(geometry->objectName());
    index.Append(geometry);
    geometry->d_ptr->state = ZORGeoGeometryPrivate::State::Registered;
}

void ZORGeoContainerPrivate::Rename(ZORGeoGeometry* geometry)
{
    if (!geometry->d_ptr->IsListed())
        return;
    names.Remove(geometry->d_ptr->registeredName);
    geometry->d_ptr->registeredName = geometry->objectName();
    names.Insert(geometry->d_ptr->registeredName);
}

void ZORGeoContainerPrivate::TakeOut(ZORGeoGeometry* geometry)
{
    index.Remove(geometry);
    names.Remove(geometry->d_ptr->registeredName);
    geometry->d_ptr->state = ZORGeoGeometryPrivate::State::Removed;
}

ZORGeoContainer::ZORGeoContainer(QObject* parent)
    : QObject(parent)
    , d_ptr(std::make_unique<ZORGeoContainerPrivate>())
{
}

ZORGeoContainer::~ZORGeoContainer()
{
    Q_D(ZORGeoContainer);
    d->closing = true;
    while (d->index.GetCount() > 0)
        delete d->index.Last();
}

int ZORGeoContainer::GetNumGeometry() const
{
    Q_D(const ZORGeoContainer);
    return int(d->index.GetCount());
}

ZORGeoGeometry* ZORGeoContainer::GetGeometryByIndex(int index) const
{
    Q_D(const ZORGeoContainer);
    return d->index.At(index);
}

void ZORGeoContainer::Clear()
{
    ZOR_TRACE_CALL();
    Q_D(ZORGeoContainer);
    while (d->index.GetCount() > 0)
        Destroy(d->index.Last());
}

QString ZORGeoContainer::GetUniqueName(const QString& wanted) const
{
    ZOR_TRACE_CALL(wanted);
    Q_D(const ZORGeoContainer);
    return d->names.MakeUnique(wanted);
}

QList<const QMetaObject*> ZORGeoContainer::GetRegisteredTypes() const
{
    TypeRegistry& registry = TypeRegistry::Get();
    QList<const QMetaObject*> types;
    {
        const QMutexLocker lock(&registry.mutex);
        types = registry.types;
    }
    std::stable_sort(types.begin(), types.end(), [](const QMetaObject* a, const QMetaObject* b) {
        return std::strcmp(a->className(), b->className()) < 0;
    });
    types.erase(std::unique(types.begin(), types.end()), types.end());
    return types;
}

void ZORGeoContainer::RegisterType(const QMetaObject* type)
{
    TypeRegistry& registry = TypeRegistry::Get();
    const QMutexLocker lock(&registry.mutex);
    registry.types.append(type);
}

void ZORGeoContainer::UnregisterType(const QMetaObject* type)
{
    TypeRegistry& registry = TypeRegistry::Get();
    const QMutexLocker lock(&registry.mutex);
    registry.types.removeOne(type);
}

void ZORGeoContainer::Add(ZORGeoGeometry* geometry)
{
    Q_D(ZORGeoContainer);
    d->Register(geometry);
    connect(geometry, &QObject::objectNameChanged, this, [d, geometry] {
        d->Rename(geometry);
        geometry->ReportChange();
    });
    emit ContentChanged();
    emit GeometryAdded(geometry);
}

// Called by the destructor of a geometry that somebody deletes, maybe in answer to its announced removal.
void ZORGeoContainer::Forget(ZORGeoGeometry* geometry)
{
    Q_D(ZORGeoContainer);
    const bool announced = geometry->d_ptr->state == ZORGeoGeometryPrivate::State::Announced;
    geometry->d_ptr->state = ZORGeoGeometryPrivate::State::Announced;
    if (!announced && !d->closing)
        emit GeometryAboutToBeRemoved(geometry);
    d->TakeOut(geometry);
    if (!d->closing) {
        emit ContentChanged();
        emit GeometryRemoved();
    }
}

// Removes a geometry while it is whole, so that receivers see all of it.
void ZORGeoContainer::Destroy(ZORGeoGeometry* geometry)
{
    Q_D(ZORGeoContainer);
    const QPointer<ZORGeoContainer> self(this);
    const QPointer<ZORGeoGeometry> guard(geometry);
    const bool announced = geometry->d_ptr->state == ZORGeoGeometryPrivate::State::Announced;
    geometry->d_ptr->state = ZORGeoGeometryPrivate::State::Announced;
    if (!announced)
        emit GeometryAboutToBeRemoved(geometry);
    if (!self || !guard)
        return;
    d->TakeOut(geometry);
    delete geometry;
    if (self) {
        emit ContentChanged();
        emit GeometryRemoved();
    }
}
