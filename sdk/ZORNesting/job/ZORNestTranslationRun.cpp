#include "ZORNestJobBytes_p.h"
#include "ZORNestTranslationRun_p.h"

#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationProcessor.h>
#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysFileName.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>
#include <string_view>

namespace {

constexpr QLatin1String kSuffix(".msi");
constexpr qsizetype kLongestNumber = 11; // "-2147483647"
constexpr qsizetype kMostCharacters = 100;

/// Names of parts are read from files: keeps only what every file system takes.
QString MakeFileName(const QString& partName)
{
    QString first = partName.left(kMostCharacters);
    if (!first.isEmpty() && first.back().isHighSurrogate())
        first.chop(1);
    QString name;
    for (const char32_t character : first.trimmed().toUcs4()) {
        const bool isTaken =
            QChar::isPrint(character)
            && std::u32string_view(U"/\\:*?\"<>|").find(character) == std::u32string_view::npos;
        name += QString::fromUcs4(isTaken ? &character : U"_", 1);
    }
    if (name.startsWith(u'.'))
        name[0] = u'_';
    return name.isEmpty() ? QStringLiteral("part") : name;
}

/// One translation job.
class Translation
{
public:
    explicit Translation(ZORNestTranslationTask task)
        : m_task(std::move(task))
    {
    }

    ZORWorkResult Run(const ZORWorkContext& context);

private:
    QList<ZORWorkResource> Translate(const ZORWorkContext& context);
    const ZORNestSourceProvider& GetProvider() const;
    QString GetFileName(const ZORNestResult& part);
    static QString MakeDirectory(const ZORWorkContext& context, const QString& name);
    static void WritePart(const QString& path, const QString& name, const ZORNestResult& part);
    void WriteReport(const ZORWorkContext& context) const;

    const ZORNestTranslationTask m_task;
    const ZORNestTranslationInput& m_input = m_task.input;
    QStringList m_report;
    QSet<QString> m_names;         // in lower case: not every file system distinguishes cases
    QHash<QString, int> m_numbers; // the highest one of each name that is taken, by the part before it
};

const ZORNestSourceProvider& Translation::GetProvider() const
{
    const bool isPossible = m_input.GetInputFileType() == ZORNestTranslationInput::ProviderSource
                            && m_input.GetOutputFileType() == ZORNestTranslationInput::PartFile;
    if (!isPossible) {
        throw ZORSysException(
            ZORNestTranslationProcessor::tr("cannot translate from file type %1 to file type %2")
                .arg(QString::number(int(m_input.GetInputFileType())),
                     QString::number(int(m_input.GetOutputFileType()))));
    }
    const ZORNestSourceProvider* const provider =
        ZORNestSourceProvider::GetProvider(m_input.GetPreTranslateProvider());
    if (!provider)
        throw ZORSysException(ZORNestTranslationProcessor::tr("there is no provider '%1'")
                                  .arg(QString::fromUtf8(m_input.GetPreTranslateProvider())));
    return *provider;
}

// Resumes behind the numbers that equal names have taken: thousands of parts may share one.
QString Translation::GetFileName(const ZORNestResult& part)
{
    const QString name =
        MakeFileName(part.GetItems().isEmpty() ? QString() : part.GetItems().constFirst()->GetName());
    QString unique = ZORSysFileName::Cut(name, kSuffix.size());
    int& number = m_numbers[ZORSysFileName::Cut(name, kSuffix.size() + kLongestNumber).toLower()];
    for (number = std::max(number, 1); m_names.contains(unique.toLower());) {
        const QString end = u'-' + QString::number(++number);
        unique = ZORSysFileName::Cut(name, end.size() + kSuffix.size()) + end;
    }
    m_names.insert(unique.toLower());
    return unique + kSuffix;
}

QString Translation::MakeDirectory(const ZORWorkContext& context, const QString& name)
{
    const QString path = QDir(context.GetWorkDirectory()).filePath(name);
    if (!QDir().mkpath(path))
        throw ZORSysFileException(
            ZORNestTranslationProcessor::tr("cannot make the directory '%1'").arg(path));
    return path;
}

// Nobody else knows the directory, so that files need not be replaced in one step, which waits for the disk:
// there may be tens of thousands.
void Translation::WritePart(const QString& path, const QString& name, const ZORNestResult& part)
{
    QFile file(path);
    ZORNestResultWriter writer(&file);
    QString failure;
    if (!file.open(QIODevice::WriteOnly))
        failure = file.errorString();
    else if (writer.Write(part) < 0)
        failure = writer.GetFailure();
    if (!failure.isEmpty())
        throw ZORSysFileException(
            ZORNestTranslationProcessor::tr("cannot write part '%1': %2").arg(name, failure));
}

// For whoever looks into a directory that was kept; a missing report fails nothing.
void Translation::WriteReport(const ZORWorkContext& context) const
{
    QFile file(QDir(context.GetWorkDirectory()).filePath(QStringLiteral("report.txt")));
    if (file.open(QIODevice::WriteOnly))
        file.write((m_task.path + u'\n' + m_report.join(u'\n') + u'\n').toUtf8());
}

QList<ZORWorkResource> Translation::Translate(const ZORWorkContext& context)
{
    const QList<ZORNestResult> parts = GetProvider().Translate(m_task.path, m_input, context, &m_report);
    const QDir handedOut(MakeDirectory(context, QStringLiteral("parts")));
    const QDir kept(m_task.isKept ? MakeDirectory(context, QStringLiteral("kept")) : QString());
    QList<ZORWorkResource> resources;
    for (const ZORNestResult& part : parts) {
        context.ThrowIfCanceled();
        const QString name = GetFileName(part);
        const QString path = handedOut.filePath(name);
        WritePart(path, name, part);
        if (QFile written(path); m_task.isKept && !written.copy(kept.filePath(name)))
            throw ZORSysFileException(ZORNestTranslationProcessor::tr("cannot keep a copy of part '%1': %2")
                                          .arg(name, written.errorString()));
        resources.append(ZORWorkResource(path));
        context.SetProgress(0.8 + 0.2 * double(resources.size()) / double(parts.size()));
    }
    WriteReport(context);
    return resources;
}

// A failure is an outcome as well: the lines may explain it.
ZORWorkResult Translation::Run(const ZORWorkContext& context)
{
    QList<ZORWorkResource> resources;
    std::optional<QString> failure;
    try {
        resources = Translate(context);
    } catch (const ZORSysException& exception) {
        failure = exception.GetMessage();
    }
    return ZORWorkResult(resources, ZORNestJobBytes::Write(ZORNestTranslationOutcome{m_report, failure}));
}

} // namespace

ZORWorkResult ZORNestRunTranslation(const ZORWorkContext& context, const QByteArray& task)
{
    const ZORSysApiTracePause pause;
    return Translation(ZORNestJobBytes::ReadTranslationTask(task)).Run(context);
}
