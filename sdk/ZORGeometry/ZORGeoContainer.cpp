#include "ZORGeoContainer.h"

#include "storage/ZORGeoContainerDump_p.h"
#include "storage/ZORGeoContainerFile_p.h"
#include "storage/ZORGeoContainerLoader_p.h"
#include "storage/ZORGeoContainer_p.h"
#include "storage/ZORGeoGeometry_p.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QIODevice>
#include <QMutex>
#include <QPointer>
#include <QStringList>

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

QStringList ClassesThatCannotBeSaved(const ZORGeoContainer& container)
{
    QStringList names;
    QHash<const QMetaObject*, bool> seen;
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        const QMetaObject* const type = container.GetGeometryByIndex(i)->metaObject();
        if (seen.contains(type))
            continue;
        seen.insert(type, true);
        const auto* storage = ZORGeoObjectStorage::Find(type->className());
        if (!storage || !storage->create)
            names.append(QLatin1String(type->className()));
    }
    names.sort();
    return names;
}

using Numbers = QHash<const ZORGeoGeometry*, int>;

Numbers NumbersOf(const ZORGeoContainer& container)
{
    Numbers numbers;
    numbers.reserve(container.GetNumGeometry());
    for (int i = 0; i < container.GetNumGeometry(); ++i)
        numbers.insert(container.GetGeometryByIndex(i), i);
    return numbers;
}

std::vector<ZORGeoStoredObject> DescribeObjects(const ZORGeoContainer& container, const Numbers& numbers)
{
    QHash<const QMetaObject*, ZORGeoObjectStorage::Chain> chains;
    std::vector<ZORGeoStoredObject> objects(size_t(container.GetNumGeometry()));
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        const ZORGeoGeometry& geometry = *container.GetGeometryByIndex(i);
        ZORGeoStoredObject& object = objects[size_t(i)];
        object.className = geometry.metaObject()->className();
        object.name = geometry.objectName();
        ZORGeoObjectWriter writer(object, numbers, geometry);
        ZORGeoObjectStorage::Chain& chain = chains[geometry.metaObject()];
        if (chain.empty())
            chain = ZORGeoObjectStorage::ChainOf(geometry.metaObject());
        for (const ZORGeoObjectStorage* storage : chain)
            storage->write(geometry, writer);
    }
    return objects;
}

QList<std::pair<ZORGeoGeometry*, QCborMap>> StylesOf(const ZORGeoStoredDocument& content,
                                                     const std::vector<QPointer<ZORGeoGeometry>>& made)
{
    QList<std::pair<ZORGeoGeometry*, QCborMap>> styles;
    for (const auto& [number, values] : content.styles) {
        if (ZORGeoGeometry* const geometry = made[size_t(number)])
            styles.append({geometry, values});
    }
    return styles;
}

} // namespace

void ZORGeoContainer::Private::Register(ZORGeoGeometry* geometry)
{
    if (geometry->objectName().isEmpty()) {
        const QString stem = ZORGeoContainerNames::GetStem(geometry->metaObject()->className());
        geometry->setObjectName(names.MakeNumbered(stem));
    }
    geometry->d->registeredName = geometry->objectName();
    names.Insert(geometry->objectName());
    index.Append(geometry);
    geometry->d->state = ZORGeoGeometry::Private::State::Registered;
}

void ZORGeoContainer::Private::Rename(ZORGeoGeometry* geometry)
{
    if (!geometry->d->IsListed())
        return;
    names.Remove(geometry->d->registeredName);
    geometry->d->registeredName = geometry->objectName();
    names.Insert(geometry->d->registeredName);
}

void ZORGeoContainer::Private::TakeOut(ZORGeoGeometry* geometry)
{
    index.Remove(geometry);
    names.Remove(geometry->d->registeredName);
    geometry->d->state = ZORGeoGeometry::Private::State::Removed;
}

ZORGeoContainer::ZORGeoContainer(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

ZORGeoContainer::~ZORGeoContainer()
{
    d->closing = true;
    while (d->index.GetCount() > 0)
        delete d->index.Last();
}

int ZORGeoContainer::GetNumGeometry() const
{
    return int(d->index.GetCount());
}

ZORGeoGeometry* ZORGeoContainer::GetGeometryByIndex(int index) const
{
    return d->index.At(index);
}

void ZORGeoContainer::Clear()
{
    ZOR_TRACE_CALL();
    while (d->index.GetCount() > 0)
        Destroy(d->index.Last());
}

QString ZORGeoContainer::GetUniqueName(const QString& wanted) const
{
    ZOR_TRACE_CALL(wanted);
    const std::lock_guard lock(d->namesMutex);
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
    d->Register(geometry);
    connect(geometry, &QObject::objectNameChanged, this, [this, geometry] {
        d->Rename(geometry);
        geometry->ReportChange();
    });
    emit ContentChanged();
    emit GeometryAdded(geometry);
}

// Called by the destructor of a geometry that somebody deletes, maybe in answer to its announced removal.
void ZORGeoContainer::Forget(ZORGeoGeometry* geometry)
{
    const bool announced = geometry->d->state == ZORGeoGeometry::Private::State::Announced;
    geometry->d->state = ZORGeoGeometry::Private::State::Announced;
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
    const QPointer<ZORGeoContainer> self(this);
    const QPointer<ZORGeoGeometry> guard(geometry);
    const bool announced = geometry->d->state == ZORGeoGeometry::Private::State::Announced;
    geometry->d->state = ZORGeoGeometry::Private::State::Announced;
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

ZORGeoContainer::StoredStyles ZORGeoContainer::GetStoredStyles() const
{
    return {};
}

void ZORGeoContainer::TakeStoredStyles(const StoredStyles&) {}

ZORGeoStoredDocument ZORGeoContainer::Describe() const
{
    if (const QStringList names = ClassesThatCannotBeSaved(*this); !names.isEmpty()) {
        throw ZORSysFileException(
            tr("objects of these classes cannot be saved: %1").arg(names.join(QLatin1String(", "))));
    }
    const Numbers numbers = NumbersOf(*this);
    ZORGeoStoredDocument content{DescribeObjects(*this, numbers), {}};
    const StoredStyles styles = GetStoredStyles();
    for (const auto& [geometry, values] : styles)
        content.styles.emplace_back(numbers.value(geometry), values);
    std::sort(content.styles.begin(), content.styles.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    return content;
}

void ZORGeoContainer::Save(QIODevice& device) const
{
    ZOR_TRACE_CALL(&device);
    if (!device.isWritable())
        throw ZORSysFileException(tr("cannot write the container file: the device is not open for writing"));
    ZORGeoContainerFile::Take(*this).Write(device);
}

void ZORGeoContainer::AddContent(const ZORGeoStoredDocument& content)
{
    const std::vector<ZORGeoStoredObject>& objects = content.objects;
    try {
        ZORGeoContainerLoader loader(*this, objects);
        loader.Make();
        ZorGeoDumpLoad(objects, tr("all objects are made"));
        const QPointer<ZORGeoContainer> self(this);
        const std::vector<QPointer<ZORGeoGeometry>> made = loader.Register(d->names);
        if (self)
            TakeStoredStyles(StylesOf(content, made));
    } catch (const ZORSysException& exception) {
        ZorGeoDumpLoad(objects, exception.GetMessage());
        throw;
    }
}

void ZORGeoContainer::Load(QIODevice& device)
{
    ZOR_TRACE_CALL(&device);
    if (!device.isReadable())
        throw ZORSysFileException(tr("cannot read the container file: the device is not open for reading"));
    ZORSysMemory::Read(ZORGeoContainerFileData::GetName(device),
                       ZORGeoContainerFileData::EstimateMemory(device), [&] {
                           zor::geo::ProgressReporter progress;
                           ZORGeoContainerFileData file;
                           file.Read(device, progress);
                           AddContent(file.content);
                       });
}
