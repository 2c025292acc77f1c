#include "ZORCompWriter.h"

#include "formats/ZORCompDocumentCollector_p.h"

#include <ZORComposites/ZORCompFormat.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

namespace {

void Save(const QString& fileName, const QByteArray& content)
{
    ZORSysReplacedFile file(fileName);
    file.Open();
    if (!file.Write(content) || !file.Commit())
        throw ZORSysException(file.GetErrorString());
}

} // namespace

QList<QByteArray> ZORCompWriter::GetSupportedFormats()
{
    QList<QByteArray> ids;
    for (const ZORCompFormat* format : ZORCompFormat::GetFormats()) {
        if (format->CanWrite())
            ids.append(format->GetId());
    }
    return ids;
}

QList<QString> ZORCompWriter::GetFormatFileExtensions(const QByteArray& format)
{
    return ZORCompFormat::Find(format).GetFileFilters();
}

class ZORCompWriter::Private
{
public:
    QString file;
    QByteArray format;
};

ZORCompWriter::ZORCompWriter(const QString& file, const QByteArray& format)
    : d(new Private{file, format})
{
    ZOR_TRACE_CALL(file, QString::fromUtf8(format));
    if (!ZORCompFormat::Find(format).CanWrite())
        throw ZORSysException(tr("composites format '%1' cannot be written").arg(QString::fromUtf8(format)));
}

ZORCompWriter::~ZORCompWriter() = default;

QStringList ZORCompWriter::Write(const ZORCompRoot* root) const
{
    ZOR_TRACE_CALL(root);
    if (!root)
        throw ZORSysException(tr("composites root is null"));
    const ZORCompFormat& format = ZORCompFormat::Find(d->format);
    try {
        const ZORCompDocumentCollector collector(*root);
        Save(d->file, format.Write(collector.GetDocument()));
        return collector.GetOmitted();
    } catch (const ZORSysFileException&) {
        throw;
    } catch (const ZORSysException& exception) {
        throw ZORSysFileException(tr("cannot write '%1': %2").arg(d->file, exception.GetMessage()));
    }
}
