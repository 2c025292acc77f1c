// What the host knows about one plug-in.

#pragma once

#include <QString>

/// One plug-in file, loaded or not.
struct ZORHostPlugin
{
    enum class State {
        Loaded,
        Failed,   // see reason
        Unloaded, // was loaded before
    };

    QString path;       // absolute
    QString name;       // from its metadata; the file name where there is none
    QString version;    // from its metadata
    QString sdkVersion; // of the SDK it was built against, from its metadata
    State state = State::Failed;
    QString reason; // why it is not loaded (Failed), or why it is still in memory (Unloaded); else empty
};
