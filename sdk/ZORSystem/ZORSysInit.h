// Initialisation of the SDK and the callbacks that wait for it.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <functional>

/// Remembers \a callback until ZORSysInitialize() runs; when the system is already initialised it runs
/// at once. Either way it is dropped once it has run, so a library may be unloaded afterwards. Usable
/// from static initialisers.
/// \return true
ZORSYSTEM_EXPORT bool ZORSysRegisterInit(const std::function<void()>& callback);

/// Called once by the application at start, before it loads plug-ins: runs the waiting callbacks in
/// the order of their registration. Later calls do nothing.
ZORSYSTEM_EXPORT void ZORSysInitialize();
