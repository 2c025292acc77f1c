// Version of the SDK.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QString>

/// The version of the SDK libraries that run, not of the headers that a caller was compiled with. Plug-ins
/// of the same major version fit.
///
/// Thread safety: thread-safe.
class ZORSYSTEM_EXPORT ZORSysVersion
{
public:
    static int GetMajor();
    static int GetMinor();
    static int GetPatch();
    /// "major.minor.patch".
    static QString GetString();

    /// Whether a plug-in built against SDK version \a version can run with this one: the same major version,
    /// and no newer minor version. False for a text that does not start with a version.
    static bool IsCompatible(const QString& version);
};
