// Work that stops before the memory runs out.

#pragma once

#include <QIODevice>

/// Refuses to go on when the memory runs low. For work inside libraries that write through a null pointer
/// where they should throw: they must never get that far.
class ZORTestMemoryWatch
{
public:
    /// Takes note of memory that is about to be used.
    /// \return whether enough for a message would be left
    bool CanUse(qint64 bytes);

    /// Takes note of memory that is about to be used.
    /// \throws std::bad_alloc  unless enough for a message would be left
    void Use(qint64 bytes);

private:
    static constexpr qint64 kInterval = qint64(4) << 20; // the system is asked each time that so much is used

    qint64 m_unchecked = kInterval; // bytes; the first use asks at once
};

/// The rest of another device, which ends early when there is no memory for what is made of it.
class ZORTestWatchedDevice final : public QIODevice
{
public:
    /// Opens the device for reading.
    /// \param device  open for reading; outlives this object
    /// \param factor  bytes of memory that the reader needs for a byte
    ZORTestWatchedDevice(QIODevice& device, qint64 factor);

    /// Returns whether the device ended early.
    bool IsMemoryLow() const { return m_isMemoryLow; }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    QIODevice& m_device;
    const qint64 m_factor;
    ZORTestMemoryWatch m_watch;
    bool m_isMemoryLow = false;
};
