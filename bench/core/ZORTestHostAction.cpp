#include "core/ZORTestHostAction.h"

#include <ZORCommand/ZORCmdController.h>

#include <QVariantMap>

namespace {

const QMetaObject* Register(const QMetaObject* command)
{
    ZORCmdController::GetController()->RegisterCommand(command);
    return command;
}

} // namespace

// The host may keep the strings longer than the library stays loaded: they are allocated, not literals.
ZORTestHostAction::ZORTestHostAction(const QMetaObject* command, const QString& text, const QString& toolTip)
    : m_publisher(QString::fromLatin1("Test"), Register(command), QString::fromLatin1("nesting-info"), text,
                  toolTip, 0, 1, QVariantMap())
{
}
