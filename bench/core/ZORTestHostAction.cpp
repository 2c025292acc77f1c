#include "core/ZORTestHostAction.h"

#include <ZORCommand/ZORCmdController.h>

#include <QString>
#include <QVariantMap>

namespace {

const QMetaObject* Register(const QMetaObject* command)
{
    ZORCmdController::GetController()->RegisterCommand(command);
    return command;
}

} // namespace

// The host may keep the strings longer than the library stays loaded: they are allocated, not literals.
ZORTestHostAction::ZORTestHostAction(const QMetaObject* command, const char* text, const char* toolTip)
    : m_publisher(QString::fromLatin1("Test"), Register(command), QString::fromLatin1("nesting-info"),
                  QString::fromLatin1(text), QString::fromLatin1(toolTip), 0, 1, QVariantMap())
{
}
