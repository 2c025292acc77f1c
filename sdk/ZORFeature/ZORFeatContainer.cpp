#include "ZORFeatContainer.h"

#include <ZORFeature/ZORFeatRoot.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QPointer>

#include <memory>

class ZORFeatContainer::Private
{
public:
    // A handful at most, so a list is searched. A root that is gone leaves a null pointer.
    QList<QPointer<ZORFeatRoot>> roots;
};

ZORFeatContainer::ZORFeatContainer(QObject* parent)
    : ZORGeoContainer(parent)
    , d(std::make_unique<Private>())
{
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
