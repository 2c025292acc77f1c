#include "ZORNestResultWriter.h"

#include "formats/ZORNestResultDocument_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QFileDevice>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(ZorResultWriterLog, "zor.nesting")

void WriteTo(QIODevice& device, const QByteArray& bytes)
{
    if (!ZORSysReplacedFile::WriteAll(device, bytes))
        throw ZORSysFileException(
            ZORNestResultWriter::tr("cannot write the result file: %1").arg(device.errorString()));
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
            throw ZORSysFileException(tr("the device is not open for writing"));
        WriteTo(*device, bytes);
        return;
    }
    ZORSysReplacedFile file(RequirePath());
    file.Open();
    WriteTo(file.GetDevice(), bytes);
    if (!file.Commit())
        throw ZORSysFileException(tr("cannot write the result file: %1").arg(file.GetErrorString()));
}

qint64 ZORNestResultWriter::Write(const ZORNestResult& result)
{
    ZOR_TRACE_CALL(result);
    SetFailure({});
    try {
        if (!result.IsValid())
            throw ZORSysException(tr("an invalid result cannot be written"));
        const QByteArray bytes = ZORNestResultDocument::Write(result);
        WriteBytes(bytes);
        return bytes.size();
    } catch (const ZORSysException& exception) {
        SetFailure(exception.GetMessage());
    } catch (const std::bad_alloc&) {
        SetFailure(tr("not enough memory for the result file"));
    }
    // Not every caller looks at what this returns.
    qCWarning(ZorResultWriterLog).noquote()
        << (GetDevice() ? tr("a result is not written: %1").arg(GetFailure())
                        : tr("result file '%1' is not written: %2").arg(GetFilePath(), GetFailure()));
    return -1;
}
