#include "ZORGeoGeometry.h"

#include "storage/ZORGeoGeometry_p.h"
#include "storage/ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoGeometry)

namespace {

// Qt keeps the description of a type that it meets first: not that of a plug-in, which may be unloaded.
[[maybe_unused]] const int kGeometryMetaType = qRegisterMetaType<ZORGeoGeometry*>();
[[maybe_unused]] const int kClassMetaType = qRegisterMetaType<const QMetaObject*>();

} // namespace

ZORGeoGeometry::ZORGeoGeometry(ZORGeoContainer* container)
    : d(std::make_unique<Private>())
{
    d->container = container;
    ZORGeoDebugOptions::RecordConstruction();
}

ZORGeoGeometry::~ZORGeoGeometry()
{
    if (d->container && d->IsListed())
        d->container->Forget(this);
}

void ZORGeoGeometry::Initialize()
{
    ZOR_TRACE_CALL();
    if (d->state != Private::State::Unregistered)
        return;
    if (!d->container)
        throw ZORSysException(tr("geometry has no container"));
    d->container->Add(this);
}

bool ZORGeoGeometry::IsInitialized() const
{
    return d->IsListed();
}

ZORGeoContainer* ZORGeoGeometry::GetContainer() const
{
    return d->container;
}

int ZORGeoGeometry::GetReferenceCount() const
{
    return d->references;
}

void ZORGeoGeometry::AddReference(const QObject* user) const
{
    ZOR_TRACE_CALL(user);
    ++d->references;
    ++d->users[user];
    ZORGeoDebugOptions::RecordReferenceChange();
}

void ZORGeoGeometry::RemoveReference(const QObject* user) const
{
    ZOR_TRACE_CALL(user);
    if (d->references == 0) {
        qCWarning(ZorGeometryLog).noquote()
            << tr("a reference to '%1' was given back that nobody held").arg(objectName());
        return;
    }
    --d->references;
    if (const auto count = d->users.find(user); count != d->users.end() && --count->second == 0)
        d->users.erase(count);
    if (d->references == 0)
        d->users.clear(); // users that have returned references of others
    ZORGeoDebugOptions::RecordReferenceChange();
}

void ZORGeoGeometry::RemoveNoReferences()
{
    ZOR_TRACE_CALL();
    if (d->references != 0 || d->state == Private::State::Announced)
        return;
    Destroy();
}

void ZORGeoGeometry::ReportChange()
{
    if (d->container && d->IsListed())
        emit d->container->ContentChanged();
}

void ZORGeoGeometry::FollowShape(const ZORGeoGeometry* used)
{
    if (!used)
        return;
    connect(
        used, &ZORGeoGeometry::UpdateRequested, this,
        [this] {
            UpdateShape();
            emit UpdateRequested(QPrivateSignal());
        },
        Qt::DirectConnection);
    connect(used, &ZORGeoGeometry::ShapeChanged, this, &ZORGeoGeometry::EmitShapeChanged,
            Qt::DirectConnection);
}

void ZORGeoGeometry::UpdateShape() {}

void ZORGeoGeometry::ReportShapeChange()
{
    emit UpdateRequested(QPrivateSignal());
    EmitShapeChanged();
}

void ZORGeoGeometry::EmitShapeChanged()
{
    ReportChange();
    emit ShapeChanged();
}

void ZORGeoGeometry::Destroy()
{
    if (d->container && d->IsListed())
        d->container->Destroy(this);
    else
        delete this;
}
