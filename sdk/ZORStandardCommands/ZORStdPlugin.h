// Description of the plug-in library, readable without loading it.

#pragma once

#include <QObject>
#include <QtPlugin>

/// Carries the name, the version and the SDK version of the library as plug-in metadata; does nothing else: the
/// commands are published while the library is loaded.
class ZORStdPlugin final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "ZORStandardCommands.json")
};
