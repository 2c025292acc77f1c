#include "RandomUserSession.h"

#include "RandomUserAddress.h"
#include "RandomUserChecks.h"
#include "RandomUserMemory.h"
#include "app/ZORHostProgram.h"
#include "window/ZORHostMainWindow.h"

#include <QApplication>
#include <QDir>
#include <QPixmapCache>
#include <QThread>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kActionsPerCheck = 25;
constexpr double kMillisecondsPerHour = 3'600'000;

/// Whether the program waits for the next event and not for the answer to a modal dialog or menu.
bool IsInOutermostLoop()
{
    return QThread::currentThread()->loopLevel() == 1;
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
    // Qt 6.4 never forgets the names in its cache of what it has drawn, a quarter of a kilobyte for each action:
    // they would hide a leak of the host.
    if (m_plan.memoryEvery > 0)
        QPixmapCache::setCacheLimit(0);
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
    if (!m_plan.replay.isEmpty())
        return m_numDone >= m_replayed.size();
    if (m_plan.hours > 0)
        return double(m_time.elapsed()) > m_plan.hours * kMillisecondsPerHour;
    return m_numDone >= m_plan.numActions;
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
        m_watch.CheckReachable(!RandomUserAddress::GetReachableWindows().isEmpty());
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
    const QString run =
        m_plan.replay.isEmpty() ? QStringLiteral("seed %1").arg(m_plan.seed) : QStringLiteral("replay");
    std::printf("%s: %d actions, %.0f s, %s\n", qPrintable(run), m_numDone, double(m_time.elapsed()) / 1000,
                qPrintable(DescribeRandomUserMemory()));
    std::fflush(stdout);
}
