#include "ZORGeoObjectStorage.h"

#include <QMutex>

#include <cstring>

namespace {

// Never destroyed before the registrations, which are made after it.
struct Registry
{
    QMutex mutex; // libraries may be loaded while containers of other threads are saved
    std::vector<const ZORGeoObjectStorage*> storages;
};

Registry& GetRegistry()
{
    static Registry registry;
    return registry;
}

} // namespace

const ZORGeoObjectStorage* ZORGeoObjectStorage::Find(const char* className)
{
    Registry& registry = GetRegistry();
    const QMutexLocker lock(&registry.mutex);
    for (const ZORGeoObjectStorage* storage : registry.storages) {
        if (std::strcmp(storage->type->className(), className) == 0)
            return storage;
    }
    return nullptr;
}

ZORGeoObjectStorage::Chain ZORGeoObjectStorage::ChainOf(const QMetaObject* type)
{
    Chain chain;
    for (const QMetaObject* base = type; base; base = base->superClass()) {
        const ZORGeoObjectStorage* const storage = Find(base->className());
        if (storage && (base == type || !storage->create))
            chain.insert(chain.begin(), storage);
    }
    return chain;
}

ZORGeoObjectStorageRegistration::ZORGeoObjectStorageRegistration(const ZORGeoObjectStorage& storage)
    : m_storage(storage)
{
    Registry& registry = GetRegistry();
    const QMutexLocker lock(&registry.mutex);
    registry.storages.push_back(&m_storage);
}

ZORGeoObjectStorageRegistration::~ZORGeoObjectStorageRegistration()
{
    Registry& registry = GetRegistry();
    const QMutexLocker lock(&registry.mutex);
    std::erase(registry.storages, &m_storage);
}
