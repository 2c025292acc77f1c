#include "ZORNestResultReader.h"

#include "ZORNestResultDocument_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QCoreApplication>
#include <QFile>

namespace {

// What does not begin as a result file is not read to its end, which it may not have.
QByteArray ReadAll(QIODevice& device)
{
    QByteArray bytes = device.read(ZORSysDocumentEnvelope::HeaderSize);
    if (ZORSysDocumentEnvelope::HasSignature(bytes))
        bytes += device.readAll();
    return bytes;
}

} // namespace

ZORNestResultReader::ZORNestResultReader(const QString& path)
    : ZORNestResultIOBase(path)
{
    ZOR_TRACE_CALL(path);
}

ZORNestResultReader::ZORNestResultReader(QIODevice* device)
    : ZORNestResultIOBase(device)
{
    ZOR_TRACE_CALL(device);
}

ZORNestResultReader::~ZORNestResultReader() = default;

QByteArray ZORNestResultReader::ReadBytes() const
{
    if (QIODevice* const device = GetDevice()) {
        if (!device->isReadable()) {
            throw ZORSysFileException(
                QCoreApplication::translate("ZORNestResultReader", "the device is not open for reading"));
        }
        return ReadAll(*device);
    }
    QFile file(RequirePath());
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(GetFilePath(), file.errorString());
    return ReadAll(file);
}

ZORNestResult ZORNestResultReader::Read(FileFormat* format)
{
    ZOR_TRACE_CALL(format);
    if (format)
        *format = UnknownFormat;
    SetFailure({});
    try {
        const QString subject =
            GetDevice() ? QCoreApplication::translate("ZORNestResultReader", "result file") : GetFilePath();
        ZORNestResult result =
            ZORSysMemory::Read(subject, 0, [this] { return ZORNestResultDocument::Read(ReadBytes()); });
        if (format)
            *format = MsiFormat;
        return result;
    } catch (const ZORSysException& exception) {
        SetFailure(exception.GetMessage());
    }
    return {};
}
