// File descriptors of the operating system.

#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

/// Owns a file descriptor and closes it. Move-only; negative without one.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSysDescriptor
{
public:
    ZORSysDescriptor() = default;
    explicit ZORSysDescriptor(int number)
        : m_number(number)
    {
    }
    ZORSysDescriptor(ZORSysDescriptor&& other) noexcept
        : m_number(other.Release())
    {
    }
    ZORSysDescriptor& operator=(ZORSysDescriptor&& other) noexcept
    {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    ~ZORSysDescriptor() { Reset(); }

    bool IsOpen() const { return m_number >= 0; }
    int Get() const { return m_number; }
    /// Returns the descriptor, which the caller then closes.
    int Release() { return std::exchange(m_number, -1); }
    /// Closes the present descriptor and takes another one over; errno stays.
    void Reset(int number = -1)
    {
        const int error = errno;
        if (IsOpen())
            close(m_number);
        errno = error;
        m_number = number;
    }

private:
    int m_number = -1;
};
