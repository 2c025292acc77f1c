#include "RandomUserSession.h"

#include "RandomUserChecks.h"
#include "app/ZORHostProgram.h"
#include "window/ZORHostMainWindow.h"

#include <QApplication>
#include <QDir>
#include <QThread>
#include <QTimer>

#include <cstdio>
#include <malloc.h>

namespace {

constexpr int kActionsPerCheck = 25;
constexpr double kMillisecondsPerHour = 3'600'000;

/// Whether the program waits for the next event and not for the answer to a modal dialog or menu.
bool IsInOutermostLoop()
{
    return QThread::currentThread()->loopLevel() == 1;
}

/// Resident memory of this process, megabytes.
double GetResidentMemory()
{
    constexpr double kKilobytesPerMegabyte = 1024;
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).chopped(2).trimmed().toDouble() / kKilobytesPerMegabyte;
    }
    return 0;
}

} // namespace

RandomUserSession::RandomUserSession(const RandomUserPlan& plan)
    : m_plan(plan)
    , m_files(QDir(plan.folder).filePath("files"))
    , m_chooser(&m_files, plan.seed)
    , m_hand(&m_files, &m_watch)
    , m_record(QDir(plan.folder).filePath("actions.txt"))
{
    if (!plan.replay.isEmpty())
        m_replayed = ReadRandomUserActions(plan.replay);
    if (!m_record.open(QIODevice::WriteOnly | QIODevice::Truncate))
        RandomUserWatch::Fail(QStringLiteral("cannot write '%1'").arg(m_record.fileName()));
}

void RandomUserSession::Run()
{
    m_time.start();
    QTimer::singleShot(1, this, &RandomUserSession::Step);
    do
        RunProgram();
    while (!IsOver());
    if (m_plan.memoryEvery > 0)
        ReportMemory();
}

void RandomUserSession::RunProgram()
{
    ZORHostOptions options;
    options.plugins = QStringList{ZOR_TESTING, ZOR_STANDARD_COMMANDS} + m_plan.morePlugins;
    options.defaultPlugins = false;
    options.settingsFile = QDir(m_plan.folder).filePath("host.ini");
    {
        ZORHostProgram program(options);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (auto* main = qobject_cast<ZORHostMainWindow*>(window))
                main->SetAsksToSave(true);
        }
        program.Run();
    }
    CheckAfterRandomUser();
}

bool RandomUserSession::IsOver() const
{
    if (m_plan.hours > 0)
        return double(m_time.elapsed()) > m_plan.hours * kMillisecondsPerHour;
    return m_numDone >= (m_plan.replay.isEmpty() ? m_plan.numActions : int(m_replayed.size()));
}

RandomUserAction RandomUserSession::GetNext()
{
    return m_plan.replay.isEmpty() ? m_chooser.Next() : m_replayed[m_numDone];
}

void RandomUserSession::Step()
{
    m_watch.Beat();
    if (IsInOutermostLoop()) {
        m_watch.CheckGone();
        if (m_numDone % kActionsPerCheck == 0 || IsOver())
            CheckDuringRandomUser();
    }
    if (IsOver()) {
        QCoreApplication::exit();
        return;
    }
    const RandomUserAction action = GetNext();
    m_record.write(action.ToLine().toUtf8() + '\n');
    m_record.flush();
    ++m_numDone;
    if (m_plan.memoryEvery > 0 && m_numDone % m_plan.memoryEvery == 0)
        ReportMemory();
    // Announced first: the action may run the event loop of a modal dialog, in which the user continues.
    const int pause = action.kind == "wait" ? action.arguments.value(0).toInt() : 0;
    QTimer::singleShot(std::max(1, pause), this, &RandomUserSession::Step);
    m_hand.Perform(action);
}

void RandomUserSession::ReportMemory() const
{
    constexpr double kBytesPerMegabyte = 1024 * 1024;
    malloc_trim(0); // what is free but kept for later says nothing about leaks
    std::printf("seed %u: %d actions, %.0f s, %.1f MB resident, %.1f MB in use\n", m_plan.seed, m_numDone,
                double(m_time.elapsed()) / 1000, GetResidentMemory(),
                double(mallinfo2().uordblks) / kBytesPerMegabyte);
    std::fflush(stdout);
}
