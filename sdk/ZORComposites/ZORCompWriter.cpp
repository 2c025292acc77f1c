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

ZORCompWriter::ZORCompWriter(const QString& file, const QByteArray& format)
    : m_file(file)
    , m_format(format)
{
    ZOR_TRACE_CALL(file, QString::fromUtf8(format));
    if (!ZORCompFormat::Find(format).CanWrite())
        throw ZORSysException(tr("composites format '%1' cannot be written").arg(QString::fromUtf8(format)));
}

QStringList ZORCompWriter::Write(const ZORCompRoot* root) const
{
    ZOR_TRACE_CALL(root);
    if (!root)
        throw ZORSysException(tr("composites root is null"));
    const ZORCompFormat& format = ZORCompFormat::Find(m_format);
    try {
        const ZORCompDocumentCollector collector(*root);
        Save(m_file, format.Write(collector.GetDocument()));
        return collector.GetOmitted();
    } catch (const ZORSysFileException&) {
        throw;
    } catch (const ZORSysException& exception) {
        throw ZORSysFileException(tr("cannot write '%1': %2").arg(m_file, exception.GetMessage()));
    }
}
