#include "ZORGeoObjectStorage.h"

#include <cstring>

namespace {

// Never destroyed before the registrations, which are made after it.
std::vector<const ZORGeoObjectStorage*>& Storages()
{
    static std::vector<const ZORGeoObjectStorage*> storages;
    return storages;
}

} // namespace

const ZORGeoObjectStorage* ZORGeoObjectStorage::Find(const char* className)
{
    for (const ZORGeoObjectStorage* storage : Storages()) {
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
    Storages().push_back(&m_storage);
}

ZORGeoObjectStorageRegistration::~ZORGeoObjectStorageRegistration()
{
    std::erase(Storages(), &m_storage);
}
