#include "ZORNestTranslationProcessor.h"

#include "ZORNestDebugOptions.h"
#include "job/ZORNestJobBytes_p.h"
#include "job/ZORNestJobKinds_p.h"
#include "job/ZORNestSourceProviders_p.h"
#include "job/ZORNestTranslationRun_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFileNotices.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(ZorTranslationLog, "zor.nesting")

/// Whether another process can translate the file as well: it has neither the libraries that register providers nor
/// the resources of this one.
bool CanRunElsewhere(const ZORNestTranslationInput& input, const QString& path)
{
    return ZORNestIsOwnProvider(input.GetPreTranslateProvider()) && !path.startsWith(u':');
}

/// Another process has another current directory.
QString GetAbsolutePath(const QString& path)
{
    return QFileInfo(path).isRelative() && !path.isEmpty() ? QFileInfo(path).absoluteFilePath() : path;
}

/// Passes on the lines of a report about what was left out. Helpers write them, and those have no translations.
void ReportLosses(const QString& path, const QStringList& report)
{
    QStringList losses;
    for (const QString& line : report) {
        if (line.startsWith(QLatin1String("left out: ")) || line.startsWith(QLatin1String("skipped: ")))
            losses.append(line);
    }
    ZORSysFileNotices::GetInstance()->Report(QDir::toNativeSeparators(path), losses);
}

/// Keeps the report of a translation, whether it failed or not.
ZORWorkResult Accept(const ZORWorkResult& result, QStringList& report, const QString& path,
                     const QElapsedTimer& timer)
{
    const ZORNestTranslationOutcome outcome = ZORNestJobBytes::ReadTranslationOutcome(result.GetData());
    report = outcome.report;
    if (outcome.failure)
        throw ZORSysException(*outcome.failure);
    ReportLosses(path, report);
    qCInfo(ZorTranslationLog).noquote()
        << ZORNestTranslationProcessor::tr("Translated '%1': %n part file(s), %2 in %3 s", nullptr,
                                           int(result.GetResources().size()))
               .arg(QDir::toNativeSeparators(path),
                    QLocale::c().formattedDataSize(QFileInfo(path).size(), 1, QLocale::DataSizeSIFormat),
                    QString::number(double(timer.elapsed()) / 1000, 'f', 2));
    return ZORWorkResult(result.GetResources());
}

} // namespace

class ZORNestTranslationProcessor::Private
{
public:
    QList<ZORNestTranslationResponse*> responses; // QObject children of the processor
    ZORWorkProcessor worker;
    std::shared_ptr<QElapsedTimer> timer = std::make_shared<QElapsedTimer>(); // since the last Execute()
};

ZORNestTranslationProcessor::ZORNestTranslationProcessor(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
}

ZORNestTranslationProcessor::~ZORNestTranslationProcessor() = default;

void ZORNestTranslationProcessor::SetPlace(ZORWorkProcessor::Place place)
{
    ZOR_TRACE_CALL(place);
    d->worker.SetPlace(place);
}

ZORNestTranslationResponse* ZORNestTranslationProcessor::AddInput(const ZORNestTranslationInput& input,
                                                                  const ZORWorkResource& source)
{
    ZOR_TRACE_CALL(input, source);
    const QString path = GetAbsolutePath(source.GetFilePath());
    const bool isKept = ZORNestDebugOptions::GetInstance()->GetKeepTranslationWorkDirectories();
    const QByteArray task = ZORNestJobBytes::Write(ZORNestTranslationTask{input, path, isKept});
    ZORWorkJob job;
    job.name = QFileInfo(path).fileName();
    if (CanRunElsewhere(input, path)) {
        job.kind = ZORNestJobKinds::kTranslation;
        job.input = task;
    } else {
        job.run = [task](const ZORWorkContext& context) { return ZORNestRunTranslation(context, task); };
    }
    job.isDirectoryKept = isKept;
    const auto report = std::make_shared<QStringList>();
    job.accept = [report, path, timer = d->timer](const ZORWorkResult& result) {
        return Accept(result, *report, path, *timer);
    };
    d->responses.append(new ZORNestTranslationResponse(d->worker.AddJob(job), report, this));
    return d->responses.constLast();
}

QList<ZORNestTranslationResponse*> ZORNestTranslationProcessor::GetResponses() const
{
    return d->responses;
}

void ZORNestTranslationProcessor::Execute()
{
    ZOR_TRACE_CALL();
    d->timer->start();
    d->worker.Execute();
}

void ZORNestTranslationProcessor::Cancel()
{
    ZOR_TRACE_CALL();
    d->worker.Cancel();
}
