#include "RandomUserTrial.h"

#include "RandomUserWatch.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

QProcessEnvironment GetPrivateEnvironment(const QString& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        environment.insert(QLatin1String(variable), folder);
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_HASH_SEED", "0");
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("ASAN_OPTIONS",
                       environment.value("ASAN_OPTIONS") + ":hard_rss_limit_mb=4000:detect_leaks=0");
    for (const char* variable : {"ZOR_PLUGIN_PATH", "ZOR_API_TRACE"})
        environment.remove(QLatin1String(variable));
    return environment;
}

/// Numbers and addresses differ from run to run.
QString WithoutNumbers(QString text)
{
    static const QRegularExpression numbers(QStringLiteral("0x[0-9a-f]+|[0-9]+"));
    return text.replace(numbers, QStringLiteral("N"));
}

/// The line of the log that says what failed; empty for none.
QString FindReason(const QString& log)
{
    static const QRegularExpression pattern(
        QStringLiteral("^FAILURE: .*$|^SUMMARY: .*$|runtime error: .*$|^terminate called .*$"),
        QRegularExpression::MultilineOption);
    return WithoutNumbers(pattern.match(log).captured());
}

/// The processes whose home is \a folder.
QStringList FindProcesses(const QString& folder)
{
    const QByteArray home = "HOME=" + QFile::encodeName(folder);
    QStringList names;
    const QStringList ids = QDir(QStringLiteral("/proc")).entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString& id : ids) {
        QFile environment(QStringLiteral("/proc/%1/environ").arg(id));
        QFile name(QStringLiteral("/proc/%1/comm").arg(id));
        if (environment.open(QIODevice::ReadOnly) && environment.readAll().split('\0').contains(home)
            && name.open(QIODevice::ReadOnly))
            names.append(QString::fromUtf8(name.readAll().trimmed()));
    }
    return names;
}

/// Waits until the processes that the host has started have ended with it.
/// \return what is left; empty for nothing
QString AwaitProcesses(const QString& folder)
{
    constexpr int kPatience = 10'000; // milliseconds; far more than a process needs
    QStringList names;
    (void)QTest::qWaitFor(
        [&] {
            names = FindProcesses(folder);
            return names.isEmpty();
        },
        kPatience);
    return names.join(u' ');
}

} // namespace

RandomUserOutcome RandomUserTrial::RunSeed(unsigned seed) const
{
    const QTemporaryDir folder;
    return Run(folder.path(), {"--seed", QString::number(seed)});
}

RandomUserOutcome RandomUserTrial::Replay(const QList<RandomUserAction>& actions) const
{
    const QTemporaryDir folder;
    const QString list = folder.filePath("replay.txt");
    if (!WriteRandomUserActions(list, actions))
        return {QStringLiteral("cannot write '%1'").arg(list), {}, {}};
    return Run(folder.path(), {"--replay", list});
}

RandomUserOutcome RandomUserTrial::Run(const QString& folder, const QStringList& arguments) const
{
    RandomUserOutcome outcome;
    QProcess process;
    process.setProcessEnvironment(GetPrivateEnvironment(folder));
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{"--child", "--folder", folder} + arguments + m_arguments);
    process.closeWriteChannel();
    process.waitForFinished(-1); // the watch of the child ends a hang
    outcome.log = QString::fromUtf8(process.readAllStandardError());
    outcome.actions = ReadRandomUserActions(QDir(folder).filePath("actions.txt"));
    const QString left = AwaitProcesses(folder);
    if (process.error() == QProcess::FailedToStart)
        outcome.failure = process.errorString();
    else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        outcome.failure = FindReason(outcome.log);
    else if (!left.isEmpty())
        outcome.failure = QStringLiteral("processes left after the end: %1").arg(left);
    else
        return outcome;
    if (outcome.failure.isEmpty()) {
        outcome.failure = QStringLiteral("%1 %2").arg(process.exitStatus() == QProcess::CrashExit
                                                          ? QStringLiteral("crash: signal")
                                                          : QStringLiteral("exit code"),
                                                      QString::number(process.exitCode()));
    }
    return outcome;
}
