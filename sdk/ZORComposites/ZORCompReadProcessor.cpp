#include "ZORCompReadProcessor.h"

#include "formats/ZORCompDocumentBuilder_p.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFileNotices.h>

#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(ZorCompositesLog, "zor.composites")

void Log(const ZORCompReadReport& report, const QString& source)
{
    for (auto it = report.kept.begin(); it != report.kept.end(); ++it) {
        qCInfo(ZorCompositesLog).noquote() << ZORCompReadProcessor::tr("'%1': kept as attributes: %2 (%3)")
                                                  .arg(source, it.key(), QString::number(it.value()));
    }
    for (const QString& warning : report.warnings)
        qCWarning(ZorCompositesLog).noquote() << ZORCompReadProcessor::tr("'%1': %2").arg(source, warning);
}

} // namespace

class ZORCompReadProcessor::Private
{
public:
    struct Staged
    {
        ZORCompDocument document;
        QString source;
        ZORCompReadReport report;
    };

    QPointer<ZORCompRoot> root; // not owned
    bool replaces = false;
    QList<Staged> staged;
    ZORCompReadReport report;
};

ZORCompReadProcessor::ZORCompReadProcessor(ZORCompRoot* root, bool replaces)
    : d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(root, replaces);
    if (!root)
        throw ZORSysException(tr("composites root is null"));
    d->root = root;
    d->replaces = replaces;
}

ZORCompReadProcessor::~ZORCompReadProcessor() = default;

void ZORCompReadProcessor::Add(const ZORCompDocument& document, const QString& source,
                               const ZORCompReadReport& report)
{
    ZOR_TRACE_CALL(&document, source, &report);
    document.Check();
    d->staged.append({document, source, report});
}

void ZORCompReadProcessor::Finalize()
{
    ZOR_TRACE_CALL();
    QList<Private::Staged> staged = std::exchange(d->staged, {});
    if (staged.isEmpty())
        return;
    if (!d->root)
        throw ZORSysException(tr("the composites root does not exist any more"));
    ZORCompDocumentBuilder builder(d->root, d->replaces);
    for (Private::Staged& each : staged)
        builder.Build(each.document, each.source, each.report);
    builder.Commit();
    for (const Private::Staged& each : std::as_const(staged)) {
        Log(each.report, each.source);
        ZORSysFileNotices::GetInstance()->Report(each.source, each.report.warnings);
        d->report.Add(each.report);
    }
}

const ZORCompReadReport& ZORCompReadProcessor::GetReport() const
{
    return d->report;
}
