// Makes a class known as something that containers may hold.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QMetaObject>

/// Registers a geometry class with ZORGeoContainer::RegisterType() while it lives: from the load of the
/// library that holds it to its unload.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORGEOMETRY_EXPORT ZORGeoTypeRegistration
{
public:
    explicit ZORGeoTypeRegistration(const QMetaObject* type);
    ~ZORGeoTypeRegistration();
    Q_DISABLE_COPY_MOVE(ZORGeoTypeRegistration)

private:
    const QMetaObject* m_type; // static data of the class's library
};

/// One line at namespace scope in the .cpp of every class, concrete or base, that a container may hold.
#define ZOR_GEO_REGISTER_TYPE(Class)                                                                         \
    namespace {                                                                                              \
    const ZORGeoTypeRegistration zorGeoTypeRegistrationOf##Class(&Class::staticMetaObject);                  \
    }
