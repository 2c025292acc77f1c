#include "ZORNestResultWriter.h"

#include "ZORNestResultDocument_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QCoreApplication>
#include <QFileDevice>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("ZORNestResultWriter", text);
}

void WriteTo(QIODevice& device, const QByteArray& bytes)
{
    bool isWritten = device.write(bytes) == bytes.size();
    if (auto* const file = qobject_cast<QFileDevice*>(&device); file && isWritten)
        isWritten = file->flush();
    if (!isWritten)
        throw ZORSysFileException(Translate("cannot write the result file: %1").arg(device.errorString()));
}

} // namespace

ZORNestResultWriter::ZORNestResultWriter(const QString& path)
    : ZORNestResultIOBase(path)
{
    ZOR_TRACE_CALL(path);
}

ZORNestResultWriter::ZORNestResultWriter(QIODevice* device)
    : ZORNestResultIOBase(device)
{
    ZOR_TRACE_CALL(device);
}

ZORNestResultWriter::~ZORNestResultWriter() = default;

void ZORNestResultWriter::WriteBytes(const QByteArray& bytes) const
{
    if (QIODevice* const device = GetDevice()) {
        if (!device->isWritable())
            throw ZORSysFileException(Translate("the device is not open for writing"));
        WriteTo(*device, bytes);
        return;
    }
    ZORSysReplacedFile file(RequirePath());
    file.Open();
    WriteTo(file.GetDevice(), bytes);
    if (!file.Commit())
        throw ZORSysFileException(Translate("cannot write the result file: %1").arg(file.GetErrorString()));
}

qint64 ZORNestResultWriter::Write(const ZORNestResult& result)
{
    ZOR_TRACE_CALL(result);
    SetFailure({});
    try {
        if (!result.IsValid())
            throw ZORSysException(Translate("an invalid result cannot be written"));
        const QByteArray bytes = ZORNestResultDocument::Write(result);
        WriteBytes(bytes);
        return bytes.size();
    } catch (const ZORSysException& exception) {
        SetFailure(exception.GetMessage());
    } catch (const std::bad_alloc&) {
        SetFailure(Translate("not enough memory for the result file"));
    }
    return -1;
}
