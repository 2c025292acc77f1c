#include "ZORSysReplacedFile.h"

#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileInfo>
#include <QSaveFile>

namespace {

std::unique_ptr<QFileDevice> MakeDevice(const QString& path)
{
    const QFileInfo present(path);
    if (present.exists() && !present.isFile())
        return std::make_unique<ZORSysFile>(path);
    return std::make_unique<QSaveFile>(path);
}

} // namespace

ZORSysReplacedFile::ZORSysReplacedFile(const QString& path)
    : m_path(path)
    , m_device(MakeDevice(path))
{
}

ZORSysReplacedFile::~ZORSysReplacedFile() = default;

void ZORSysReplacedFile::Open()
{
    if (!m_device->open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw ZORSysFileOpenException(m_path, m_device->errorString());
}

bool ZORSysReplacedFile::Commit()
{
    auto* const replacing = qobject_cast<QSaveFile*>(m_device.get());
    return replacing ? replacing->commit() : m_device->flush();
}

QString ZORSysReplacedFile::GetErrorString() const
{
    return m_device->errorString();
}
