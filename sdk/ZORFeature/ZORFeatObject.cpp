#include "ZORFeatObject.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>
#include <QSet>

ZOR_GEO_REGISTER_TYPE(ZORFeatObject)

class ZORFeatObject::Private
{
public:
    bool hasParent = false;               // made with a parent, which may be gone since
    QPointer<ZORFeatObject> futureParent; // until Initialize(); not owned

    // The tree, as far as it is initialised: a list of siblings that costs O(1) at either end and in
    // the middle. Not owned.
    ZORFeatObject* parent = nullptr;
    ZORFeatObject* firstChild = nullptr;
    ZORFeatObject* lastChild = nullptr;
    ZORFeatObject* previous = nullptr;
    ZORFeatObject* next = nullptr;
    int numChildren = 0;

    bool initialized = false;
    bool beingRemoved = false;
    QString label;
};

namespace {

ZORGeoContainer* ContainerOf(const ZORFeatObject* feature)
{
    return feature ? feature->GetContainer() : nullptr;
}

} // namespace

ZORFeatObject::ZORFeatObject(ZORFeatObject* parent)
    : ZORGeoGeometry(ContainerOf(parent))
    , d(std::make_unique<Private>())
{
    d->hasParent = parent;
    d->futureParent = parent;
}

ZORFeatObject::ZORFeatObject(ZORGeoContainer* container)
    : ZORGeoGeometry(container)
    , d(std::make_unique<Private>())
{
}

ZORFeatObject::~ZORFeatObject()
{
    DestroyDescendants();
    Unlink();
}

void ZORFeatObject::Initialize()
{
    ZOR_TRACE_CALL();
    if (d->initialized)
        return;
    if (d->hasParent) {
        if (!d->futureParent)
            throw ZORSysException(tr("the parent feature does not exist any more"));
        if (!d->futureParent->d->initialized)
            throw ZORSysException(tr("the parent feature is not initialized"));
    }
    // Linked first: receivers of the container's signal find the tree complete, and may remove this feature.
    Link();
    d->initialized = true;
    const QPointer<ZORFeatObject> self = this;
    try {
        ZORGeoGeometry::Initialize();
    } catch (...) {
        if (self && !IsInitialized()) {
            d->initialized = false;
            Unlink();
        }
        throw;
    }
    if (self && d->parent)
        emit d->parent->ChildrenChanged();
}

ZORFeatObject* ZORFeatObject::GetParentFeature() const
{
    return d->parent ? d->parent : d->futureParent.data();
}

QList<ZORFeatObject*> ZORFeatObject::GetChildren() const
{
    QList<ZORFeatObject*> children;
    children.reserve(d->numChildren);
    for (ZORFeatObject* child = d->firstChild; child; child = child->d->next)
        children.append(child);
    return children;
}

int ZORFeatObject::GetNumChildren() const
{
    return d->numChildren;
}

QList<ZORFeatObject*> ZORFeatObject::GetAllChildren() const
{
    QList<ZORFeatObject*> all;
    for (ZORFeatObject* feature = d->firstChild; feature;) {
        all.append(feature);
        if (feature->d->firstChild) {
            feature = feature->d->firstChild;
            continue;
        }
        while (feature != this && !feature->d->next)
            feature = feature->d->parent;
        feature = feature == this ? nullptr : feature->d->next;
    }
    return all;
}

QList<ZORFeatObject*> ZORFeatObject::GetInputs() const
{
    return {};
}

bool ZORFeatObject::DependsOn(const ZORFeatObject* other) const
{
    QSet<const ZORFeatObject*> seen;
    QList<const ZORFeatObject*> pending{this};
    while (!pending.isEmpty()) {
        const ZORFeatObject* const feature = pending.takeLast();
        if (feature == other)
            return true;
        if (seen.contains(feature))
            continue;
        seen.insert(feature);
        for (const ZORFeatObject* input : feature->GetInputs())
            pending.append(input);
    }
    return false;
}

void ZORFeatObject::SetLabel(const QString& label)
{
    ZOR_TRACE_CALL(label);
    if (label == d->label)
        return;
    const QString before = GetLabel();
    d->label = label;
    ReportChange();
    const QString now = GetLabel();
    if (now == before)
        return;
    const QPointer<ZORFeatObject> self = this; // a receiver may remove this feature
    emit LabelChanged(now);
    if (!self)
        return;
    if (auto* container = qobject_cast<ZORFeatContainer*>(GetContainer()))
        emit container->FeatureLabelChanged(this);
}

QString ZORFeatObject::GetLabel() const
{
    return d->label.isEmpty() ? objectName() : d->label;
}

void ZORFeatObject::Remove()
{
    ZOR_TRACE_CALL();
    if (d->beingRemoved)
        return;
    const QPointer<ZORFeatObject> self = this; // a receiver of the container's signals may delete it
    DestroyDescendants();
    if (self)
        Destroy();
}

void ZORFeatObject::Link()
{
    if (!d->futureParent)
        return;
    d->parent = d->futureParent;
    Private* const parent = d->parent->d.get();
    d->previous = parent->lastChild;
    (d->previous ? d->previous->d->next : parent->firstChild) = this;
    parent->lastChild = this;
    ++parent->numChildren;
}

void ZORFeatObject::Unlink()
{
    if (!d->parent)
        return;
    ZORFeatObject* const parentFeature = d->parent;
    Private* const parent = parentFeature->d.get();
    (d->previous ? d->previous->d->next : parent->firstChild) = d->next;
    (d->next ? d->next->d->previous : parent->lastChild) = d->previous;
    --parent->numChildren;
    d->parent = d->previous = d->next = nullptr;
    if (d->initialized && !parent->beingRemoved)
        emit parentFeature->ChildrenChanged();
}

void ZORFeatObject::DestroyDescendants()
{
    d->beingRemoved = true;
    for (ZORFeatObject* feature : GetAllChildren())
        feature->d->beingRemoved = true;

    // The deepest last child first. Receivers of the container's signals may add or delete features
    // meanwhile, so the way on is looked up after every one.
    const QPointer<ZORFeatObject> self = this;
    QPointer<ZORFeatObject> feature = this;
    while (self && d->lastChild) {
        if (!feature)
            feature = this;
        while (feature->d->lastChild)
            feature = feature->d->lastChild;
        const QPointer<ZORFeatObject> parent = feature->d->parent;
        feature->Destroy();
        feature = parent;
    }
}

struct ZORFeatObjectStorage
{
    static void Write(const ZORFeatObject& feature, ZORGeoObjectWriter& writer)
    {
        const ZORFeatObject::Private& data = *feature.d;
        writer.WriteReference("parent", data.parent);
        writer.WriteString("label", data.label);
    }
    static void Complete(ZORFeatObject& feature, const ZORGeoObjectReader& reader)
    {
        ZORFeatObject* const parent = reader.GetReference<ZORFeatObject>("parent");
        if (parent != feature.d->futureParent)
            reader.Fail(ZORFeatObject::tr("it is not made with its parent"));
        if (parent && !reader.IsReferenceEarlier("parent"))
            reader.Fail(ZORFeatObject::tr("it comes before its parent"));
        feature.d->label = reader.GetString("label");
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORFeatObject)
