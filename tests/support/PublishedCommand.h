// Commands of plug-ins for tests.

#pragma once

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdController.h>

/// Registers a command class and publishes its action, for a static object of a plug-in library.
class PublishedCommand
{
public:
    /// \param options  see ZORCmdActionPublisher
    PublishedCommand(const QMetaObject* command, const char* category, const char* icon, const char* text,
                     const char* toolTip, ZORCmdActionPublisher::Placement placement,
                     const QVariantMap& options = {})
        : m_publisher(QLatin1String(category), Register(command), QLatin1String(icon), QLatin1String(text),
                      QLatin1String(toolTip), 0, placement, options)
    {
    }

private:
    static const QMetaObject* Register(const QMetaObject* command)
    {
        ZORCmdController::GetController()->RegisterCommand(command);
        return command;
    }

    const ZORCmdActionPublisher m_publisher;
};
