// Which libraries lie where in the address space, and since when.

#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

/// The program and its loaded libraries, as far as stack traces need them. Thread-safe.
///
/// A generation is a number that grows whenever a library was loaded or unloaded since the last look: it
/// tells whether the library at an address is the one that was there when the address was recorded.
namespace ZORSysLoadedModules {

struct Module
{
    quintptr begin = 0;
    quintptr end = 0; // one behind the last address
    QByteArray path;
    quint32 generation = 0; // the first one that saw it
};

/// Looks again where libraries were loaded or unloaded since the last look, which costs some microseconds;
/// else below 0.1 us.
/// \return the present generation
quint32 Update();

/// The module of an address as of the last Update(); none when nothing is loaded there.
std::optional<Module> Find(quintptr address);

} // namespace ZORSysLoadedModules
