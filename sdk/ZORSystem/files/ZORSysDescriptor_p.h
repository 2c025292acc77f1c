// File descriptors of the operating system.

#pragma once

#include <QtGlobal>

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace zor::sys {

/// Owns a file descriptor; negative without one.
class Descriptor
{
public:
    explicit Descriptor(int number = -1)
        : m_number(number)
    {
    }
    ~Descriptor() { Reset(); }
    Q_DISABLE_COPY_MOVE(Descriptor)

    bool IsOpen() const { return m_number >= 0; }
    int Get() const { return m_number; }
    int Release() { return std::exchange(m_number, -1); }
    /// Closes the present descriptor and takes another; errno stays.
    void Reset(int number = -1)
    {
        const int error = errno;
        if (IsOpen())
            close(m_number);
        errno = error;
        m_number = number;
    }

private:
    int m_number;
};

} // namespace zor::sys
