#include "ZORGeoStlContent_p.h"

#include <ZORSystem/ZORSysFileException.h>

#include <QCoreApplication>
#include <QFile>

#include <cstdint>

#ifdef Q_OS_UNIX
#include <sys/mman.h>
#endif

ZORGeoStlContent::ZORGeoStlContent(QIODevice* device)
{
    if (!device || !device->isReadable()) {
        throw ZORSysFileException(
            QCoreApplication::translate("ZORGeoStlLoader", "device is not open for reading"));
    }
    if (!Map(qobject_cast<QFile*>(device)))
        Read(device);
}

ZORGeoStlContent::~ZORGeoStlContent()
{
    if (m_file)
        m_file->unmap(m_mapped);
}

bool ZORGeoStlContent::Map(QFile* file)
{
    if (!file || file->isSequential() || file->size() <= file->pos())
        return false;
    const qint64 size = file->size() - file->pos();
    m_mapped = file->map(file->pos(), size);
    if (!m_mapped)
        return false;
    m_file = file;
    m_view = {m_mapped, qsizetype(size)};
    file->seek(file->size());
    return true;
}

void ZORGeoStlContent::Read(QIODevice* device)
{
    constexpr int patience = 30000; // milliseconds
    const bool isText = device->isTextModeEnabled();
    device->setTextModeEnabled(false); // its line ends would spoil binary content
    m_read = device->readAll();
    while (device->isSequential() && device->waitForReadyRead(patience))
        m_read += device->readAll();
    device->setTextModeEnabled(isText);
    const auto* file = qobject_cast<const QFileDevice*>(device);
    if (file && file->error() != QFileDevice::NoError) {
        throw ZORSysFileException(
            QCoreApplication::translate("ZORGeoStlLoader", "cannot read the STL content: %1")
                .arg(device->errorString()));
    }
    m_view = m_read;
}

void ZORGeoStlContent::Release(qsizetype bytes)
{
#ifdef Q_OS_UNIX
    // Only whole pages strictly before the place; they come back from the file if touched again.
    constexpr std::uintptr_t page = 1 << 16;
    if (!m_file || m_file->handle() < 0) // a resource inside the program
        return;
    const std::uintptr_t base = reinterpret_cast<std::uintptr_t>(m_mapped);
    const std::uintptr_t from = (base + std::uintptr_t(m_released) + page - 1) & ~(page - 1);
    const std::uintptr_t to = (base + std::uintptr_t(bytes)) & ~(page - 1);
    if (to > from)
        madvise(reinterpret_cast<void*>(from), to - from, MADV_DONTNEED);
    m_released = bytes;
#else
    Q_UNUSED(bytes)
#endif
}
