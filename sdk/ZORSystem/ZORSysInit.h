// Initialisation of the SDK and the callbacks that wait for it.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <functional>

/// Remembers \a callback until ZORSysInitialize() runs; when the system is already initialised, or being
/// initialised, it runs at once. Either way it is dropped once it has run, so a library may be unloaded
/// afterwards, and not before. Usable from static initialisers. An exception out of a callback is reported
/// as a critical message and goes no further: the other callbacks run. An empty callback does nothing.
/// \return true
ZORSYSTEM_EXPORT bool ZORSysRegisterInit(const std::function<void()>& callback);

/// Called once by the application at start, before it loads plug-ins: runs the waiting callbacks in
/// the order of their registration. Later calls, and calls by a callback, do nothing.
ZORSYSTEM_EXPORT void ZORSysInitialize();
