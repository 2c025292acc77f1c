// Publication of a host command of the bench.

#pragma once

#include <ZORCommand/ZORCmdActionPublisher.h>

#include <QMetaObject>
#include <QString>

/// Registers a command class with the SDK's command controller and shows it as a host action of the
/// bench for as long as this object lives. Static objects of this class do so while the library is
/// mapped; no application object is needed yet.
class ZORTestHostAction
{
public:
    /// \param text,toolTip  allocated by tr(), since the host may keep them longer than the library stays loaded
    ZORTestHostAction(const QMetaObject* command, const QString& text, const QString& toolTip);

private:
    ZORCmdActionPublisher m_publisher;
};
