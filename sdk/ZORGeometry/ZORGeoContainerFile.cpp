#include "ZORGeoContainerFile.h"

#include "storage/ZORGeoContainerDocument_p.h"
#include "storage/ZORGeoContainerFile_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QDir>
#include <QFileDevice>

#include <algorithm>

using zor::geo::ProgressReporter;

namespace {

/// Passes on what another device holds from where it stands, and reports the progress of that. Once that was canceled,
/// the device ends.
class WatchedDevice final : public QIODevice
{
public:
    WatchedDevice(QIODevice& device, ProgressReporter& progress)
        : m_device(device)
        , m_progress(progress)
        , m_size(device.size() - device.pos())
    {
        open(ReadOnly | Unbuffered);
    }
    bool IsCanceled() const { return m_isCanceled; }
    qint64 size() const override { return m_size; }
    bool atEnd() const override { return pos() >= m_size; }

protected:
    qint64 readData(char* data, qint64 maximumSize) override
    {
        constexpr qint64 kPiece = qint64(4) << 20; // bytes
        qint64 done = 0;
        while (done < maximumSize && !m_isCanceled) {
            const qint64 count = m_device.read(data + done, std::min(kPiece, maximumSize - done));
            if (count <= 0)
                return done > 0 ? done : count;
            done += count;
            try {
                m_progress.Update(double(pos() + done) / double(std::max<qint64>(m_size, 1)));
            } catch (const zor::geo::Canceled&) {
                m_isCanceled = true; // Qt's own functions are between here and there
            }
        }
        return m_isCanceled ? -1 : done;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QIODevice& m_device;
    ProgressReporter& m_progress;
    const qint64 m_size;
    bool m_isCanceled = false;
};

constexpr quint32 kPlainVersion = 1;
constexpr quint32 kStyledVersion = 2; // has styles, which readers of version 1 do not know

/// Version of the format, and how well a document may be compressed.
ZORSysDocumentEnvelope Envelope(quint32 version = kStyledVersion)
{
    return {ZORGeoContainer::tr("container file"), version, 1000};
}

/// Returns the document of a file.
QByteArray Unwrap(QIODevice& device, ProgressReporter& progress)
{
    if (!progress.IsWatched())
        return Envelope().Unwrap(device);
    WatchedDevice watched(device, progress);
    try {
        return Envelope().Unwrap(watched);
    } catch (const ZORSysFileException&) {
        if (watched.IsCanceled())
            throw zor::geo::Canceled();
        const auto* const file = qobject_cast<const QFileDevice*>(&device);
        if (!file || file->error() == QFileDevice::NoError)
            throw;
        throw ZORSysFileException(
            ZORGeoContainer::tr("cannot read the container file: %1").arg(file->errorString()));
    }
}

void WriteAll(QIODevice& device, const QByteArray& file)
{
    if (!ZORSysReplacedFile::WriteAll(device, file)) {
        throw ZORSysFileException(
            ZORGeoContainer::tr("cannot write the container file: %1").arg(device.errorString()));
    }
}

} // namespace

QString ZORGeoContainerFileData::GetName(const QIODevice& device)
{
    const auto* const file = qobject_cast<const QFileDevice*>(&device);
    return file ? QDir::toNativeSeparators(file->fileName()) : ZORGeoContainer::tr("container file");
}

qint64 ZORGeoContainerFileData::EstimateMemory(QIODevice& device)
{
    constexpr double kBytesPerByte = 3.5;
    if (device.isSequential())
        return 0;
    const qint64 size = device.size() - device.pos();
    const qint64 document = Envelope().GetDocumentSize(device.peek(ZORSysDocumentEnvelope::HeaderSize), size);
    return document == 0 ? 0 : size + qint64(kBytesPerByte * double(document));
}

void ZORGeoContainerFileData::Read(QIODevice& device, ProgressReporter& progress)
{
    constexpr double kUnwrapped = 0.6; // part of the time that it takes to get the document
    progress.SetRange(0, kUnwrapped);
    const QByteArray document = Unwrap(device, progress);
    progress.SetRange(kUnwrapped, 1);
    content = ZORGeoContainerDocument::Read(document, progress);
}

void ZORGeoContainerFileData::Write(QIODevice& device, ProgressReporter& progress) const
{
    constexpr double kDescribed = 0.3, kPacked = 0.8; // parts of the time
    progress.SetRange(0, kDescribed);
    QByteArray bytes = ZORGeoContainerDocument::Write(content, progress);
    progress.Update(1);
    bytes = Envelope(content.styles.empty() ? kPlainVersion : kStyledVersion).Wrap(bytes);
    progress.SetRange(kPacked, 1);
    progress.Update(0);
    if (!progress.IsWatched()) {
        WriteAll(device, bytes);
        return;
    }
    constexpr qsizetype kPiece = qsizetype(16) << 20; // bytes
    for (qsizetype done = 0; done < bytes.size(); done += kPiece) {
        WriteAll(device,
                 QByteArray::fromRawData(bytes.constData() + done, std::min(kPiece, bytes.size() - done)));
        progress.Update(double(done) / double(bytes.size()));
    }
}

ZORGeoContainerFile::ZORGeoContainerFile()
    : d(new ZORGeoContainerFileData)
{
}

ZORGeoContainerFile::ZORGeoContainerFile(const ZORGeoContainerFile& other) = default;
ZORGeoContainerFile::ZORGeoContainerFile(ZORGeoContainerFile&& other) noexcept = default;
ZORGeoContainerFile& ZORGeoContainerFile::operator=(const ZORGeoContainerFile& other) = default;
ZORGeoContainerFile& ZORGeoContainerFile::operator=(ZORGeoContainerFile&& other) noexcept = default;
ZORGeoContainerFile::~ZORGeoContainerFile() = default;

int ZORGeoContainerFile::GetNumObjects() const
{
    return int(d->content.objects.size());
}

std::optional<ZORGeoContainerFile> ZORGeoContainerFile::Read(QIODevice& device,
                                                             const std::function<bool(double)>& report)
{
    ZOR_TRACE_CALL(&device);
    if (!device.isReadable()) {
        throw ZORSysFileException(
            ZORGeoContainer::tr("cannot read the container file: the device is not open for reading"));
    }
    try {
        return ZORSysMemory::Read(ZORGeoContainerFileData::GetName(device),
                                  ZORGeoContainerFileData::EstimateMemory(device), [&] {
                                      ProgressReporter progress(report);
                                      progress.Report(0);
                                      std::optional<ZORGeoContainerFile> file(std::in_place);
                                      file->d->Read(device, progress);
                                      progress.Report(1);
                                      return file;
                                  });
    } catch (const zor::geo::Canceled&) {
        return {};
    }
}

void ZORGeoContainerFile::AddTo(ZORGeoContainer& container) const
{
    ZOR_TRACE_CALL(&container);
    ZORSysMemory::Read(ZORGeoContainer::tr("container file"), 0, [&] { container.AddContent(d->content); });
}

ZORGeoContainerFile ZORGeoContainerFile::Take(const ZORGeoContainer& container)
{
    ZOR_TRACE_CALL(&container);
    ZORGeoContainerFile file;
    file.d->content = container.Describe();
    return file;
}

bool ZORGeoContainerFile::Write(QIODevice& device, const std::function<bool(double)>& report) const
{
    ZOR_TRACE_CALL(&device);
    if (!device.isWritable()) {
        throw ZORSysFileException(
            ZORGeoContainer::tr("cannot write the container file: the device is not open for writing"));
    }
    try {
        ProgressReporter progress(report);
        progress.Report(0);
        d->Write(device, progress);
        progress.Report(1);
        return true;
    } catch (const zor::geo::Canceled&) {
        return false;
    }
}
