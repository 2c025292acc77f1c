// How the geometries of a class are written to container files and made from them.

#pragma once

#include <ZORGeometry/ZORGeoObjectReader.h>
#include <ZORGeometry/ZORGeoObjectWriter.h>
#include <ZORGeometry/ZORGeometryGlobal.h>

#include <vector>

/// The functions of one class, which a struct XStorage next to the class X gives as static members:
///
/// void Write(const X&, ZORGeoObjectWriter&)
///     Writes the content; name and class are written already.
/// X* Create(ZORGeoContainer*, const ZORGeoObjectReader&)
///     Makes the geometry; missing in a class that has no objects of its own. Nothing is registered, and
///     nothing of the container changed: that happens once all objects of the file are made. A new object belongs to
///     the caller. May return one that the container holds already: it then takes the place of the one of the file.
/// void Complete(X&, const ZORGeoObjectReader&)
///     Optional: runs after all objects are made, for links and for what every derived class shares.
///
/// Write() and Complete() of a class without Create() serve all classes derived from it, and run before
/// theirs; those of a class with Create() serve its own objects only.
///
/// Thread safety: thread-safe.
struct ZORGEOMETRY_EXPORT ZORGeoObjectStorage
{
    const QMetaObject* type;
    void (*write)(const ZORGeoGeometry&, ZORGeoObjectWriter&);
    ZORGeoGeometry* (*create)(ZORGeoContainer*, const ZORGeoObjectReader&); // null: no objects of its own
    void (*complete)(ZORGeoGeometry&, const ZORGeoObjectReader&);           // null: nothing to do

    /// The storage of the class of that very name; null when no loaded library has registered one.
    static const ZORGeoObjectStorage* Find(const char* className);
    /// The storages that write and complete the objects of a class: those of its bases that have no objects of
    /// their own, then its own.
    using Chain = std::vector<const ZORGeoObjectStorage*>;
    static Chain ChainOf(const QMetaObject* type);

    template<class Class, class Storage>
    static ZORGeoObjectStorage Make()
    {
        ZORGeoObjectStorage storage{&Class::staticMetaObject, nullptr, nullptr, nullptr};
        storage.write = [](const ZORGeoGeometry& geometry, ZORGeoObjectWriter& writer) {
            Storage::Write(static_cast<const Class&>(geometry), writer);
        };
        if constexpr (requires { &Storage::Create; }) {
            storage.create = [](ZORGeoContainer* container, const ZORGeoObjectReader& reader) {
                return static_cast<ZORGeoGeometry*>(Storage::Create(container, reader));
            };
        }
        if constexpr (requires { &Storage::Complete; }) {
            storage.complete = [](ZORGeoGeometry& geometry, const ZORGeoObjectReader& reader) {
                Storage::Complete(static_cast<Class&>(geometry), reader);
            };
        }
        return storage;
    }
};

/// Keeps a storage known while it lives: from the load of the library that holds it to its unload.
/// Thread safety: reentrant; one thread at a time per object.
class ZORGEOMETRY_EXPORT ZORGeoObjectStorageRegistration
{
public:
    explicit ZORGeoObjectStorageRegistration(const ZORGeoObjectStorage& storage);
    ~ZORGeoObjectStorageRegistration();
    Q_DISABLE_COPY_MOVE(ZORGeoObjectStorageRegistration)

private:
    const ZORGeoObjectStorage m_storage;
};

/// One line at namespace scope in the .cpp of a class, behind its struct ClassStorage.
#define ZOR_GEO_REGISTER_STORAGE(Class)                                                                      \
    namespace {                                                                                              \
    const ZORGeoObjectStorageRegistration                                                                    \
        zorGeoObjectStorageOf##Class(ZORGeoObjectStorage::Make<Class, Class##Storage>());                    \
    }
