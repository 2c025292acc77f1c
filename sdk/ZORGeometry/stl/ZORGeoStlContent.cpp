#include "ZORGeoStlContent_p.h"
#include "path/ZORGeoProgressReporter_p.h"

#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileDevice>

namespace {

constexpr qsizetype kPiece = qsizetype(4) << 20; // bytes

} // namespace

ZORGeoStlContent::ZORGeoStlContent(QIODevice* device, zor::geo::ProgressReporter& progress)
    : m_device(device)
    , m_progress(progress)
    , m_isText(device && device->isTextModeEnabled())
{
    if (!device || !device->isReadable())
        throw ZORSysFileException(ZORGeoStlLoader::tr("device is not open for reading"));
    device->setTextModeEnabled(false); // its line ends would spoil binary content
    if (device->isSequential()) {
        ReadSequential();
        m_size = m_buffer.size();
    } else {
        m_start = device->pos();
        m_size = std::max<qint64>(device->size() - m_start, 0);
        m_left = m_size;
    }
}

ZORGeoStlContent::~ZORGeoStlContent()
{
    m_device->setTextModeEnabled(m_isText);
}

void ZORGeoStlContent::ReadSequential()
{
    constexpr int kPatience = 30000; // milliseconds
    m_buffer = m_device->readAll();
    while (m_device->waitForReadyRead(kPatience))
        m_buffer += m_device->readAll();
    ThrowOnError();
}

void ZORGeoStlContent::ThrowOnError() const
{
    const auto* file = qobject_cast<const QFileDevice*>(m_device);
    if (file && file->error() != QFileDevice::NoError)
        throw ZORSysFileException(
            ZORGeoStlLoader::tr("cannot read the STL content: %1").arg(m_device->errorString()));
}

QByteArrayView ZORGeoStlContent::Fetch(qsizetype minimum)
{
    qsizetype present = m_buffer.size() - m_position;
    if (present < minimum && m_left > 0) {
        m_hasStart = m_hasStart && m_position == 0;
        m_buffer.remove(0, m_position);
        m_position = 0;
        m_progress.Update(double(m_size - m_left) / double(m_size));
        const auto wanted = qsizetype(std::min<qint64>(std::max(kPiece, minimum), m_left));
        m_buffer.resize(present + wanted);
        qint64 numRead = 0;
        for (qint64 read = 1; read > 0 && numRead < wanted; numRead += std::max<qint64>(read, 0))
            read = m_device->read(m_buffer.data() + present + numRead, wanted - numRead);
        ThrowOnError();
        m_buffer.resize(present + qsizetype(numRead));
        m_left = numRead < wanted ? 0 : m_left - numRead; // less: the file was shortened
        present = m_buffer.size();
    }
    m_isAtEnd = m_left == 0;
    return QByteArrayView(m_buffer).sliced(m_position, present);
}

void ZORGeoStlContent::Rewind()
{
    m_position = 0;
    if (m_hasStart)
        return;
    m_device->seek(m_start);
    m_buffer.resize(0);
    m_hasStart = true;
    m_left = m_size;
}
