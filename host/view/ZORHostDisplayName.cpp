#include "view/ZORHostDisplayName.h"

#include <ZORFeature/ZORFeatObject.h>

#include <QCoreApplication>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostDisplayName)
};

} // namespace

QString ZORHostDisplayName(const QObject* object)
{
    if (!object)
        return Texts::tr("unnamed object");
    const auto* feature = qobject_cast<const ZORFeatObject*>(object);
    if (feature && !feature->GetLabel().isEmpty())
        return feature->GetLabel();
    return object->objectName().isEmpty() ? QString::fromLatin1(object->metaObject()->className())
                                          : object->objectName();
}
