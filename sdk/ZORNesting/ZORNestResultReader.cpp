#include "ZORNestResultReader.h"

#include "ZORNestResultDocument_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORSystem/ZORSysFileException.h>

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
        ZORNestResult result = ZORNestResultDocument::Read(ReadBytes());
        if (format)
            *format = MsiFormat;
        return result;
    } catch (const ZORSysException& exception) {
        SetFailure(exception.GetMessage());
    } catch (const std::bad_alloc&) {
        SetFailure(
            QCoreApplication::translate("ZORNestResultReader", "not enough memory for the result file"));
    }
    return {};
}
