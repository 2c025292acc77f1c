#include "ZORCompReader.h"

#include <ZORComposites/ZORCompFormat.h>
#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QFileInfo>

namespace {

constexpr qint64 kMaximumSize = qint64(1)
                                << 30; // bytes; what the parsers make of a file is many times larger

QByteArray ReadAll(const QString& fileName)
{
    ZORSysFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(fileName, file.errorString());
    if (file.size() > kMaximumSize)
        throw ZORSysException(ZORCompReader::tr("the file is larger than %1 bytes").arg(kMaximumSize));
    QByteArray content = file.readAll();
    if (file.error() != QFile::NoError)
        throw ZORSysException(file.errorString());
    return content;
}

/// Returns the number of bytes that the content and the document of a file take together; 0 for files that are too
/// large to be read at all.
qint64 EstimateMemory(const QString& fileName)
{
    constexpr qint64 kBytesPerByte = 10;
    const qint64 size = QFileInfo(fileName).size();
    return size > kMaximumSize ? 0 : kBytesPerByte * size;
}

} // namespace

QList<QByteArray> ZORCompReader::GetSupportedFormats()
{
    QList<QByteArray> ids;
    for (const ZORCompFormat* format : ZORCompFormat::GetFormats())
        ids.append(format->GetId());
    return ids;
}

QList<QString> ZORCompReader::GetFormatFileExtensions(const QByteArray& format)
{
    return ZORCompFormat::Find(format).GetFileFilters();
}

class ZORCompReader::Private
{
public:
    QString file;
    QByteArray format;
};

ZORCompReader::ZORCompReader(const QString& file, const QByteArray& format)
    : d(new Private{file, format})
{
    ZOR_TRACE_CALL(file, QString::fromUtf8(format));
    ZORCompFormat::Find(format);
}

ZORCompReader::~ZORCompReader() = default;

/// Calls a function with the document and its report.
template<typename Function>
void ZORCompReader::ReadWith(const Function& function) const
{
    const ZORCompFormat& format = ZORCompFormat::Find(d->format);
    try {
        ZORSysMemory::Read(d->file, EstimateMemory(d->file), [&] {
            ZORCompReadReport report;
            const ZORCompDocument document = format.Parse(ReadAll(d->file), report);
            function(document, report);
        });
    } catch (const ZORSysFileException&) {
        throw;
    } catch (const ZORSysException& exception) {
        throw ZORSysFileException(tr("cannot read '%1': %2").arg(d->file, exception.GetMessage()));
    }
}

void ZORCompReader::Read(ZORCompReadProcessor* processor) const
{
    ZOR_TRACE_CALL(processor);
    if (!processor)
        throw ZORSysException(tr("read processor is null"));
    ReadWith([&](const ZORCompDocument& document, const ZORCompReadReport& report) {
        processor->Add(document, d->file, report);
    });
}

ZORCompDocument ZORCompReader::Parse(ZORCompReadReport& report) const
{
    ZOR_TRACE_CALL(&report);
    ZORCompDocument result;
    ReadWith([&](const ZORCompDocument& document, const ZORCompReadReport& found) {
        document.Check();
        result = document;
        report = found;
    });
    return result;
}
