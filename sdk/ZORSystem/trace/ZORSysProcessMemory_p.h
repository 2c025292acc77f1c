// Reads memory that may have vanished.

#pragma once

#include <QtGlobal>

/// The memory of this process, read through the system. Pages of a mapped file vanish when another process cuts the file
/// short: an access to them ends the program, while the system reports them.
class ZorSysProcessMemory
{
public:
    ZorSysProcessMemory();
    ~ZorSysProcessMemory();
    Q_DISABLE_COPY_MOVE(ZorSysProcessMemory)

    /// Copies memory. Where the system does not provide the memory of the process, this is a plain access.
    /// \return whether all of it is there
    bool Read(quintptr address, void* bytes, size_t size) const;

private:
    int m_descriptor;
};
