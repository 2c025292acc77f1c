#include "HelpersTest.h"

#include "TestKinds.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMessageLogContext>
#include <QMutex>

#include <chrono>

namespace {

QMutex s_mutex; // of the messages, which come from several threads
QStringList s_messages;

void CollectMessage(QtMsgType, const QMessageLogContext& context, const QString& message)
{
    const QMutexLocker lock(&s_mutex);
    s_messages.append(QString::fromLatin1(context.category) + ": " + message);
}

} // namespace

HelpersTest::HelpersTest()
{
    static const bool registered = (RegisterTestKinds(), true);
    EXPECT_TRUE(registered);
    ZORWorkHelpers::SetProgram(GetProgram("helper"));
    processor->SetBaseDirectory(base.path());
    ClearMessages();
    m_previous = qInstallMessageHandler(CollectMessage);
}

HelpersTest::~HelpersTest()
{
    processor.reset();
    // The directory of a job lives as long as its killed process, and a thread removes it afterwards.
    EXPECT_TRUE(QTest::qWaitFor([this] { return GetRooms().isEmpty(); }, kPatience));
    ZORWorkHelperRun::SetStopGrace(std::chrono::seconds(10));
    qInstallMessageHandler(m_previous);
}

QString HelpersTest::GetProgram(const QString& name)
{
    return QCoreApplication::applicationDirPath() + "/worker_test_" + name;
}

QStringList HelpersTest::GetMessages(const QString& part)
{
    const QMutexLocker lock(&s_mutex);
    return s_messages.filter(part);
}

void HelpersTest::ClearMessages()
{
    const QMutexLocker lock(&s_mutex);
    s_messages.clear();
}

QSet<qint64> HelpersTest::GetChildren(qint64 parent)
{
    QSet<qint64> children;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(parent));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + "/children"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& id : file.readAll().split(' ')) {
            if (!id.trimmed().isEmpty())
                children.insert(id.toLongLong());
        }
    }
    return children;
}

bool HelpersTest::IsAlive(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2, 1) != "Z";
}

ZORWorkResponse* HelpersTest::Add(const QByteArray& command, bool runsWhenStopped)
{
    ZORWorkJob job;
    job.name = QStringLiteral("job");
    job.kind = "test";
    job.input = command;
    job.runsWhenStopped = runsWhenStopped;
    return processor->AddJob(job);
}

QString HelpersTest::RunJob(const QByteArray& command)
{
    const ZORWorkResponse* const response = Add(command);
    processor->Execute();
    if (!WaitForEnd(response))
        return QStringLiteral("hangs");
    return response->GetStatus() == Status::Finished ? QString::fromUtf8(response->GetResult().GetData())
                                                     : "! " + response->GetFailureReason();
}

void HelpersTest::UseImpostor(const QString& name)
{
    const QString link = m_programs.filePath(name);
    ASSERT_TRUE(QFile::link(GetProgram("impostor"), link));
    ZORWorkHelpers::SetProgram(link);
}
