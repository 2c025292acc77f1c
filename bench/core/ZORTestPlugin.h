// Description of the plug-in library, readable without loading it.

#pragma once

#include "core/ZORTestingGlobal.h"

#include <QObject>
#include <QtPlugin>

/// True at the latest once the SDK system is initialised; the host can tell by this symbol that the
/// bench is present. The spelling is established.
extern "C" ZORTESTING_EXPORT bool _ZORTestingLoaded;

/// Carries the name, the version and the SDK version of the library as plug-in metadata; does nothing
/// else, since everything happens in static initialisers.
class ZORTestPlugin final : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "ZORTesting.json")
};
