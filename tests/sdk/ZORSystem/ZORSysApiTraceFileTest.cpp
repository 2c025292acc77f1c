// Files of ZORSysApiTrace.

#include "ApiTraceTest.h"
#include "TracedCalls.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysFileException.h>

#include <QCoreApplication>
#include <QProcess>

namespace {

using ZORSysApiTraceFileTest = ApiTraceTest;

TEST_F(ZORSysApiTraceFileTest, TheFileHoldsEveryCallAtOnce)
{
    const QString fileName = directory.filePath("trace.txt");
    TracedCalls calls;
    ZORSysApiTrace::GetInstance()->SetFile(fileName);
    EXPECT_EQ(fileName, ZORSysApiTrace::GetInstance()->GetFile());
    EXPECT_TRUE(ZORSysApiTrace::IsEnabled());
    calls.Get(1);
    EXPECT_EQ(QStringList({"TracedCalls::Get(1)", ""}), LinesOf(fileName));
    calls.Get(2);
    ZORSysApiTrace::GetInstance()->SetFile({});
    calls.Get(3);
    EXPECT_EQ(QStringList({"TracedCalls::Get(1)", "TracedCalls::Get(2)", ""}), LinesOf(fileName));
    ZORSysApiTrace::GetInstance()->SetFile(fileName);
    EXPECT_EQ(QStringList(""), LinesOf(fileName));
}

TEST_F(ZORSysApiTraceFileTest, AFileThatCannotBeWrittenLeavesTheOneBefore)
{
    const QString fileName = directory.filePath("trace.txt");
    TracedCalls calls;
    ZORSysApiTrace::GetInstance()->SetFile(fileName);
    EXPECT_THROW(ZORSysApiTrace::GetInstance()->SetFile(directory.path()), ZORSysFileOpenException);
    EXPECT_THROW(ZORSysApiTrace::GetInstance()->SetFile(directory.filePath("none/trace.txt")),
                 ZORSysFileOpenException);
    calls.Get(1);
    EXPECT_EQ(QStringList({"TracedCalls::Get(1)", ""}), LinesOf(fileName));
}

TEST_F(ZORSysApiTraceFileTest, AFullDiskEndsTheWritingWithAWarning)
{
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    static QStringList messages;
    messages.clear();
    TracedCalls calls;
    ZORSysApiTrace::GetInstance()->SetFile("/dev/full");
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { messages.append(message); });
    calls.Get(1);
    calls.Get(2);
    qInstallMessageHandler(previous);
    ASSERT_EQ(1, messages.size());
    EXPECT_TRUE(messages.constFirst().startsWith("cannot write API trace '/dev/full': "))
        << messages.constFirst().toStdString();
    EXPECT_FALSE(ZORSysApiTrace::IsEnabled());
}

/// Runs this test program again for the test cases of \a filter with a trace file.
QString RunWithTraceFile(const QString& fileName, const QString& filter, int* exitCode)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZOR_API_TRACE", fileName);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_also_run_disabled_tests", "--gtest_filter=" + filter});
    process.waitForFinished(60000);
    *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return QString::fromUtf8(process.readAllStandardError());
}

// What the traced process of the next tests does.
TEST(ZORSysApiTraceProcess, DISABLED_Call)
{
    TracedCalls::Static(1.5);
    static const struct AtExit
    {
        ~AtExit() { TracedCalls::Static(2.5); }
    } atExit;
}

TEST_F(ZORSysApiTraceFileTest, TheEnvironmentVariableTracesFromTheFirstCallToTheLast)
{
    const QString fileName = directory.filePath("environment.txt");
    int exitCode = -1;
    RunWithTraceFile(fileName, "ZORSysApiTraceProcess.DISABLED_Call", &exitCode);
    EXPECT_EQ(0, exitCode);
    // The first call is the static initialiser's, the last one the static destructor's.
    EXPECT_EQ(
        QStringList({"TracedCalls::Static(0.5)", "TracedCalls::Static(1.5)", "TracedCalls::Static(2.5)", ""}),
        LinesOf(fileName));
}

TEST_F(ZORSysApiTraceFileTest, AnUnwritableFileInTheEnvironmentIsAWarning)
{
    int exitCode = -1;
    const QString fileName = directory.filePath("none/trace.txt");
    const QString errors = RunWithTraceFile(fileName, "ZORSysApiTraceProcess.DISABLED_Call", &exitCode);
    EXPECT_EQ(0, exitCode);
    EXPECT_TRUE(errors.contains("ZOR_API_TRACE: cannot open file '" + fileName + "': "))
        << errors.toStdString();
}

const bool kCalledByAnInitializer = [] {
    TracedCalls::Static(0.5);
    return true;
}();

} // namespace
