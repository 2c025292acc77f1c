// An owned file descriptor.

#pragma once

#include <unistd.h>
#include <utility>

/// Closes its descriptor. Move-only; -1 when empty.
class ZORWorkDescriptor
{
public:
    ZORWorkDescriptor() = default;
    explicit ZORWorkDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ZORWorkDescriptor(ZORWorkDescriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    ZORWorkDescriptor& operator=(ZORWorkDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~ZORWorkDescriptor() { Close(); }

    int Get() const { return m_descriptor; }
    bool IsOpen() const { return m_descriptor >= 0; }
    void Close()
    {
        if (m_descriptor >= 0)
            close(std::exchange(m_descriptor, -1));
    }

private:
    int m_descriptor = -1;
};
