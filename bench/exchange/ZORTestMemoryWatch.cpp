#include "exchange/ZORTestMemoryWatch.h"

#include <ZORSystem/ZORSysMemory.h>

#include <new>

bool ZORTestMemoryWatch::CanUse(qint64 bytes)
{
    m_unchecked += bytes;
    if (m_unchecked < kInterval)
        return true;
    if (ZORSysMemory::GetAvailable() < ZORSysMemory::Reserve::kDefaultSize + m_unchecked)
        return false;
    m_unchecked = 0;
    return true;
}

void ZORTestMemoryWatch::Use(qint64 bytes)
{
    if (!CanUse(bytes))
        throw std::bad_alloc();
}

ZORTestWatchedDevice::ZORTestWatchedDevice(QIODevice& device, qint64 factor)
    : m_device(device)
    , m_factor(factor)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 ZORTestWatchedDevice::readData(char* data, qint64 maxSize)
{
    const qint64 size = m_device.read(data, maxSize);
    m_isMemoryLow = m_isMemoryLow || !m_watch.CanUse(size * m_factor);
    return m_isMemoryLow ? -1 : size;
}

qint64 ZORTestWatchedDevice::writeData(const char*, qint64)
{
    return -1;
}
