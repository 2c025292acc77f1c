#include "console/ZORTestInitializeRootCmd.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>

#include <QInputDialog>

ZOR_TEST_REGISTER(ZORTestInitializeRootCmd)

namespace {

// By name: a plug-in may hold a class of its own that goes by it.
bool IsFeatureRoot(const QMetaObject* type)
{
    while (type && qstrcmp(type->className(), "ZORFeatRoot") != 0)
        type = type->superClass();
    return type;
}

} // namespace

ZORTestInitializeRootCmd::ZORTestInitializeRootCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestInitializeRootCmd::Execute()
{
    ZORFeatContainer* const container = GetEnvironment()->GetEnvironment()->GetContainer();
    QStringList classNames;
    for (const QMetaObject* type : container->GetRegisteredTypes()) {
        if (IsFeatureRoot(type))
            classNames.append(QLatin1String(type->className()));
    }
    const QString className =
        QInputDialog::getItem(GetEnvironment()->GetUiParent(), tr("Select the environment to initialize"),
                              tr("Environment Class:"), classNames, 0, false);
    if (className.isEmpty()) {
        emit Finished(false);
        return;
    }
    emit Finished(container->GetFeatureRoot(className.toLatin1().constData()));
}
