// Tests of ZORSysStackTrace.

#include "SystemTestLibrary.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysStackMonitor.h>
#include <ZORSystem/ZORSysStackTrace.h>

#include <QLibrary>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

#include <thread>

// Not in the anonymous namespace: their names are expected in the traces.
constexpr int kCaptureLine = __LINE__ + 3;
[[gnu::noinline]] ZORSysStackTrace CaptureHere(int maximumLength)
{
    ZORSysStackTrace trace = ZORSysStackTrace::Capture(maximumLength);
    asm volatile(""); // no tail call: the frame must stay
    return trace;
}

[[gnu::noinline]] ZORSysStackTrace CaptureBelow(int depth, int maximumLength)
{
    ZORSysStackTrace trace = depth > 0 ? CaptureBelow(depth - 1, maximumLength) : CaptureHere(maximumLength);
    asm volatile("");
    return trace;
}

namespace {

QStringList Lines(const ZORSysStackTrace& trace, const QString& prefix = {}, int firstFrame = 0)
{
    return trace.ToSTring(prefix, firstFrame).split('\n', Qt::SkipEmptyParts);
}

TEST(ZORSysStackTraceTest, FirstFrameIsTheCallerWithFunctionFileAndLine)
{
    const QStringList lines = Lines(CaptureHere(8));
    ASSERT_FALSE(lines.isEmpty());
    const QRegularExpression expected("^#0  CaptureHere\\(int\\) at .*/ZORSysStackTraceTest\\.cpp:(\\d+)$");
    const QRegularExpressionMatch match = expected.match(lines.constFirst());
    ASSERT_TRUE(match.hasMatch()) << lines.constFirst().toStdString();
    EXPECT_EQ(kCaptureLine, match.captured(1).toInt());
}

TEST(ZORSysStackTraceTest, FramesFollowFromTheInsideOut)
{
    const QStringList lines = Lines(CaptureBelow(3, 8));
    ASSERT_GE(lines.size(), 6);
    EXPECT_TRUE(lines[0].startsWith("#0  CaptureHere(int)"));
    for (int i = 1; i <= 4; ++i)
        EXPECT_TRUE(lines[i].startsWith(QString("#%1  CaptureBelow(int, int) at ").arg(i)));
}

TEST(ZORSysStackTraceTest, KeepsAsManyFramesAsWanted)
{
    EXPECT_EQ(0, CaptureBelow(20, -1).GetNumFrames());
    EXPECT_EQ(0, CaptureBelow(20, 0).GetNumFrames());
    EXPECT_EQ(QString(), CaptureBelow(20, 0).ToSTring("> ", 0));
    EXPECT_EQ(1, CaptureBelow(20, 1).GetNumFrames());
    EXPECT_EQ(8, CaptureBelow(20, 8).GetNumFrames());
    EXPECT_EQ(ZORSysStackTrace::MaximumFrames, CaptureBelow(200, 1000).GetNumFrames());
}

TEST(ZORSysStackTraceTest, PrefixStandsInEveryLineAndInnerFramesCanBeLeftOut)
{
    const ZORSysStackTrace trace = CaptureBelow(3, 4);
    const QStringList all = Lines(trace, "> ");
    ASSERT_EQ(4, all.size());
    for (const QString& line : all)
        EXPECT_TRUE(line.startsWith("> #"));
    EXPECT_EQ(all.sliced(3), Lines(trace, "> ", 3));
    EXPECT_EQ(all, Lines(trace, "> ", -5));
    EXPECT_EQ(QString(), trace.ToSTring("> ", 4));
    EXPECT_EQ(QString(), ZORSysStackTrace().ToSTring("> ", 0));
}

TEST(ZORSysStackTraceTest, FrameWithoutDebugInformationShowsItsLibrary)
{
    ZORSysStackTrace trace;
    std::thread([&trace] { trace = CaptureHere(50); }).join();
    const QStringList lines = Lines(trace); // ends in the thread start of the C library
    EXPECT_TRUE(lines.constLast().contains(QRegularExpression(" (in libc\\.so\\.6|at .*:\\d+)$")))
        << lines.constLast().toStdString();
}

class LoadedLibraryTest : public testing::Test
{
protected:
    void SetUp() override { Load(); }
    void TearDown() override { ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces(); }
    void Load()
    {
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        record = reinterpret_cast<ZorTestRecordStackFunction>(library.resolve("ZorTestRecordStack"));
        ASSERT_TRUE(record);
    }
    static QList<ZORSysStackTrace> Traces()
    {
        return ZORSysStackMonitor::GetStackMonitor()->GetStackTraces("SystemTestLibrary");
    }

    QLibrary library = QLibrary(QStringLiteral(SYSTEM_TEST_LIBRARY));
    ZorTestRecordStackFunction record = nullptr;
};

TEST_F(LoadedLibraryTest, FunctionsOfALibraryLoadedLaterAreNamed)
{
    CaptureHere(4).ToSTring(QString(), 0); // reads the debug information of what is loaded
    ASSERT_TRUE(library.unload());
    CaptureHere(4).ToSTring(QString(), 0);
    Load();
    record();
    EXPECT_TRUE(Lines(Traces().constFirst()).constFirst().startsWith("#0  ZorTestRecordStack at "));
    ASSERT_TRUE(library.unload());
}

TEST_F(LoadedLibraryTest, FramesOfAnUnloadedLibraryShowTheirAddressAlone)
{
    record();
    const ZORSysStackTrace trace = Traces().constFirst();
    EXPECT_TRUE(Lines(trace).constFirst().contains("ZorTestRecordStack"));
    ASSERT_TRUE(library.unload());
    const QStringList lines = Lines(trace);
    EXPECT_TRUE(lines[0].contains(QRegularExpression("^#0  0x[0-9a-f]+$"))) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].contains("TestBody")) << lines[1].toStdString();
}

TEST_F(LoadedLibraryTest, LabelOfAnUnloadedLibraryStaysReadable)
{
    record();
    ASSERT_TRUE(library.unload());
    EXPECT_EQ(QList<QString>({"SystemTestLibrary"}), ZORSysStackMonitor::GetStackMonitor()->GetLabels());
}

// Another library of the same size tends to land at the address of the first one: the trace must not
// name the functions of the newcomer.
TEST_F(LoadedLibraryTest, FramesOfAnUnloadedLibraryAreNotTakenForThoseOfAnotherOne)
{
    record();
    const ZORSysStackTrace trace = Traces().constFirst();
    ASSERT_TRUE(library.unload());
    CaptureHere(1); // sees that the library went
    Load();
    const QStringList lines = Lines(trace);
    EXPECT_TRUE(lines[0].contains(QRegularExpression("^#0  0x[0-9a-f]+$"))) << lines[0].toStdString();
    ASSERT_TRUE(library.unload());
}

} // namespace
