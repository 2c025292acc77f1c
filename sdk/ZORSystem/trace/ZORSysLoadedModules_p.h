// Which libraries lie where in the address space, and since when.

#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <compare>
#include <optional>

/// The program and its loaded libraries, as far as stack traces need them. Thread-safe.
///
/// A generation is a number that grows whenever a library was loaded or unloaded since the last look: it
/// tells whether the library at an address is the one that was there when the address was recorded.
namespace ZORSysLoadedModules {

/// Distinguishes a file from any that takes its path, and from itself once its contents change.
struct FileIdentity
{
    quint64 device = 0;
    quint64 number = 0; // of the file on its device; 0 for no file
    qint64 size = 0;
    qint64 changeTime = 0; // in nanoseconds

    static FileIdentity Of(int descriptor);
    static FileIdentity Of(const QByteArray& path);

    auto operator<=>(const FileIdentity&) const = default;
};

struct Module
{
    quintptr begin = 0;
    quintptr end = 0;         // one behind the last address
    quintptr loadAddress = 0; // difference between its addresses in memory and in the file
    QByteArray path;
    FileIdentity file;      // as first seen
    quint32 generation = 0; // the first one that saw it
};

/// Looks again where libraries were loaded or unloaded since the last look, which costs some microseconds for each
/// of them; else below 0.1 us.
/// \return the present generation
quint32 Update();

/// The module of an address as of the last Update(); none when nothing is loaded there.
std::optional<Module> Find(quintptr address);

} // namespace ZORSysLoadedModules
