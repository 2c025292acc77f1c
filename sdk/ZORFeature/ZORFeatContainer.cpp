#include "ZORFeatContainer.h"

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QHash>
#include <QPointer>

#include <memory>
#include <mutex>
#include <utility>

namespace {

// Which feature made what. Features are asked for what they own once they are complete: when somebody wants to know.
class Owners
{
public:
    void Touch(ZORFeatGeometry* feature) { m_touched.append(feature); }
    // Called by the destructor of a geometry, too: only its address is good.
    void Remove(const ZORGeoGeometry* geometry)
    {
        m_owners.remove(geometry);
        const QList<const ZORGeoGeometry*> owned = m_owned.take(geometry);
        for (const ZORGeoGeometry* part : owned)
            m_owners.remove(part);
    }
    ZORFeatGeometry* Find(const ZORGeoGeometry* geometry) const
    {
        const std::lock_guard lock(m_mutex);
        const QList<QPointer<ZORFeatGeometry>> touched = std::exchange(m_touched, {});
        for (const QPointer<ZORFeatGeometry>& feature : touched) {
            if (feature && feature->IsInitialized())
                Update(feature);
        }
        return m_owners.value(geometry);
    }

private:
    void Update(ZORFeatGeometry* feature) const
    {
        QList<const ZORGeoGeometry*>& owned = m_owned[feature];
        for (const ZORGeoGeometry* part : std::as_const(owned))
            m_owners.remove(part);
        owned.clear();
        const QList<ZORGeoGeometry*> own = feature->GetOwnedGeometry();
        for (const ZORGeoGeometry* part : own) {
            owned.append(part);
            m_owners.insert(part, feature);
        }
    }

    mutable std::mutex m_mutex; // of what const functions bring up to date
    mutable QList<QPointer<ZORFeatGeometry>> m_touched;
    mutable QHash<const ZORGeoGeometry*, ZORFeatGeometry*> m_owners;
    mutable QHash<const ZORGeoGeometry*, QList<const ZORGeoGeometry*>> m_owned; // by feature
};

} // namespace

class ZORFeatContainer::Private
{
public:
    // A handful at most, so a list is searched. A root that is gone leaves a null pointer.
    QList<QPointer<ZORFeatRoot>> roots;
    Owners owners;
    ZORFeatStyles* styles = nullptr; // child
};

ZORFeatContainer::ZORFeatContainer(QObject* parent)
    : ZORGeoContainer(parent)
    , d(std::make_unique<Private>())
{
    connect(this, &ZORGeoContainer::GeometryAdded, this, [this](ZORGeoGeometry* geometry) {
        auto* const feature = qobject_cast<ZORFeatGeometry*>(geometry);
        if (!feature)
            return;
        d->owners.Touch(feature);
        connect(feature, &ZORFeatGeometry::BodyChanged, this, [this, feature] { d->owners.Touch(feature); });
    });
    connect(this, &ZORGeoContainer::GeometryAboutToBeRemoved, this,
            [this](ZORGeoGeometry* geometry) { d->owners.Remove(geometry); });
    d->styles = new ZORFeatStyles(this);
}

ZORFeatContainer::~ZORFeatContainer() = default;

ZORFeatRoot* ZORFeatContainer::GetFeatureRoot(const char* className)
{
    ZOR_TRACE_CALL(className);
    if (!className)
        return nullptr;
    if (ZORFeatRoot* root = FindRoot(className))
        return root;

    for (const QMetaObject* type : GetRegisteredTypes()) {
        if (qstrcmp(type->className(), className) != 0 || !type->inherits(&ZORFeatRoot::staticMetaObject))
            continue;
        std::unique_ptr<QObject> object(type->newInstance(Q_ARG(ZORFeatContainer*, this)));
        if (auto* root = qobject_cast<ZORFeatRoot*>(object.get())) {
            root->Initialize();
            object.release(); // the container's from here on
            return root;
        }
    }
    return nullptr;
}

QList<ZORFeatRoot*> ZORFeatContainer::GetFeatureRoots() const
{
    QList<ZORFeatRoot*> roots;
    for (const QPointer<ZORFeatRoot>& root : std::as_const(d->roots)) {
        if (root)
            roots.append(root);
    }
    return roots;
}

ZORFeatStyles* ZORFeatContainer::GetStyles() const
{
    return d->styles;
}

ZORFeatGeometry* ZORFeatContainer::GetOwner(const ZORGeoGeometry* geometry) const
{
    return d->owners.Find(geometry);
}

ZORGeoContainer::StoredStyles ZORFeatContainer::GetStoredStyles() const
{
    return d->styles->GetStored();
}

void ZORFeatContainer::TakeStoredStyles(const StoredStyles& styles)
{
    d->styles->TakeStored(styles);
}

ZORFeatRoot* ZORFeatContainer::FindRoot(const QByteArray& className) const
{
    for (const QPointer<ZORFeatRoot>& root : std::as_const(d->roots)) {
        if (root && className == root->metaObject()->className())
            return root;
    }
    return nullptr;
}

void ZORFeatContainer::AddRoot(ZORFeatRoot* root)
{
    d->roots.removeAll(nullptr);
    d->roots.append(root);
}
