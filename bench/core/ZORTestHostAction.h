// Publication of a host command of the bench.

#pragma once

#include <ZORCommand/ZORCmdActionPublisher.h>

#include <QMetaObject>

/// Registers a command class with the SDK's command controller and shows it as a host action of the
/// bench for as long as this object lives. Static objects of this class do so while the library is
/// mapped; no application object is needed yet.
class ZORTestHostAction
{
public:
    ZORTestHostAction(const QMetaObject* command, const char* text, const char* toolTip);

private:
    ZORCmdActionPublisher m_publisher;
};
