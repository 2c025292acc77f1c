#include "view/ZORHostDisplayName.h"

#include <ZORFeature/ZORFeatObject.h>

#include <QCoreApplication>

QString ZORHostDisplayName(const QObject* object)
{
    if (!object)
        return QCoreApplication::translate("ZORHostDisplayName", "unnamed object");
    const auto* feature = qobject_cast<const ZORFeatObject*>(object);
    if (feature && !feature->GetLabel().isEmpty())
        return feature->GetLabel();
    return object->objectName().isEmpty() ? QString::fromLatin1(object->metaObject()->className())
                                          : object->objectName();
}
