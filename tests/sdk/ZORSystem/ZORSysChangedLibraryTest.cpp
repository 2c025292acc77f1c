// Stack traces through libraries whose files change after they were loaded.

#include "SystemTestLibrary.h"

#include <ZORSystem/ZORSysStackMonitor.h>
#include <ZORSystem/ZORSysStackTrace.h>

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

/// Writes into the present file, which keeps its identity.
void Overwrite(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly));
    ASSERT_EQ(contents.size(), file.write(contents));
    ASSERT_TRUE(file.resize(contents.size()));
}

/// Ends a child process, which must not run the code of a library that was cut short.
[[noreturn]] void EndChild(const QStringList& wrong)
{
    std::fputs(qPrintable(wrong.join('\n')), stderr);
    _exit(wrong.isEmpty() ? 0 : 1);
}

class ZORSysChangedLibraryTest : public testing::Test
{
protected:
    void SetUp() override { Load(folder.filePath(QStringLiteral("changing.so"))); }
    /// Loads a copy of the library and records a trace through it.
    void Load(const QString& copy)
    {
        path = copy;
        ASSERT_TRUE(QFile::copy(QStringLiteral(SYSTEM_TEST_LIBRARY), path));
        ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        whole = ReadFile(path);
        library.setFileName(path);
        ASSERT_TRUE(library.load()) << qPrintable(library.errorString());
        const auto record =
            reinterpret_cast<ZorTestRecordStackFunction>(library.resolve("ZorTestRecordStack"));
        ASSERT_TRUE(record);
        record();
        trace = ZORSysStackMonitor::GetStackMonitor()->GetStackTraces("SystemTestLibrary").constLast();
    }
    /// Leaves the library of the parent process alone.
    void StartChild()
    {
        ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("child")));
        Load(folder.filePath(QStringLiteral("child/changing.so")));
    }
    void TearDown() override
    {
        ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces();
        EXPECT_TRUE(library.unload());
    }

    QString FirstFrame() const { return trace.ToSTring({}, 0).section('\n', 0, 0); }
    /// An address in the library whose file says no more.
    static bool IsWithoutSymbol(const QString& frame)
    {
        static const QRegularExpression expected("^#0  0x[0-9a-f]+ in changing\\.so$");
        return expected.match(frame).hasMatch();
    }
    static bool IsNamed(const QString& frame) { return frame.startsWith("#0  ZorTestRecordStack at "); }

    QTemporaryDir folder;
    QString path;
    QByteArray whole;
    QLibrary library;
    ZORSysStackTrace trace;
};

TEST_F(ZORSysChangedLibraryTest, AnUnchangedFileNamesItsFunctions)
{
    EXPECT_TRUE(IsNamed(FirstFrame())) << qPrintable(FirstFrame());
}

TEST_F(ZORSysChangedLibraryTest, AFileCutShortShowsAddresses)
{
    EXPECT_EXIT(
        {
            StartChild();
            QStringList wrong;
            for (const qsizetype size :
                 {whole.size() - 1, whole.size() / 2, qsizetype(4096), qsizetype(1), qsizetype(0)}) {
                QFile::resize(path, size);
                if (!IsWithoutSymbol(FirstFrame()))
                    wrong.append(FirstFrame());
            }
            EndChild(wrong);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(ZORSysChangedLibraryTest, AFileCutShortAfterItWasReadKeepsItsNames)
{
    EXPECT_EXIT(
        {
            StartChild();
            QStringList wrong;
            if (!IsNamed(FirstFrame()))
                wrong.append(FirstFrame());
            QFile::resize(path, 0);
            if (!IsNamed(FirstFrame()))
                wrong.append(FirstFrame());
            EndChild(wrong);
        },
        testing::ExitedWithCode(0), "^$");
}

// Loading and unloading makes the traces list all libraries again.
TEST_F(ZORSysChangedLibraryTest, OtherLibrariesComeAndGoBesideOneCutShort)
{
    EXPECT_EXIT(
        {
            StartChild();
            QStringList wrong;
            QFile::resize(path, 0);
            QLibrary other(QStringLiteral(SYSTEM_TEST_LIBRARY));
            for (int i = 0; i < 4; ++i) {
                if (!(i % 2 == 0 ? other.load() : other.unload()))
                    wrong.append(other.errorString());
                if (IsNamed(FirstFrame()) || ZORSysStackTrace::Capture(1).GetNumFrames() != 1)
                    wrong.append(FirstFrame());
            }
            EndChild(wrong);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(ZORSysChangedLibraryTest, AFileThatVanishedShowsAddresses)
{
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(IsWithoutSymbol(FirstFrame())) << qPrintable(FirstFrame());
}

TEST_F(ZORSysChangedLibraryTest, AnotherFileOfTheNameIsNotAsked)
{
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::copy(QStringLiteral(SYSTEM_TEST_LIBRARY), path));
    EXPECT_TRUE(IsWithoutSymbol(FirstFrame())) << "a copy of the same contents may not be the library";
    ASSERT_TRUE(QFile::remove(path));
    QFile text(path);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray("just a text\n").repeated(1000));
    text.close();
    EXPECT_TRUE(IsWithoutSymbol(FirstFrame()));
}

TEST_F(ZORSysChangedLibraryTest, AFileThatBecameAPipeIsNotWaitedFor)
{
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_EQ(0, mkfifo(QFile::encodeName(path).constData(), 0600));
    EXPECT_TRUE(IsWithoutSymbol(FirstFrame()));
}

TEST_F(ZORSysChangedLibraryTest, DebugInformationOverwrittenInPlaceIsNotRead)
{
    QByteArray garbage = whole;
    std::mt19937 random(7);
    for (qsizetype i = whole.size() / 2; i < whole.size(); ++i)
        garbage[i] = char(random());
    Overwrite(path, garbage);
    EXPECT_TRUE(IsWithoutSymbol(FirstFrame())) << qPrintable(FirstFrame());
    Overwrite(path, whole);
}

TEST_F(ZORSysChangedLibraryTest, ALibraryLoadedAgainIsReadOnce)
{
    const QString first = FirstFrame();
    ASSERT_TRUE(IsNamed(first));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(library.unload());
        EXPECT_FALSE(FirstFrame().contains("ZorTestRecordStack"));
        ASSERT_TRUE(library.load());
        reinterpret_cast<ZorTestRecordStackFunction>(library.resolve("ZorTestRecordStack"))();
        trace = ZORSysStackMonitor::GetStackMonitor()->GetStackTraces("SystemTestLibrary").constLast();
        EXPECT_EQ(first, FirstFrame());
    }
    QFile maps(QStringLiteral("/proc/self/maps"));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray all = maps.readAll();
    EXPECT_LT(all.count("memfd:zor-symbols"), 100) << "copies are kept for each load";
}

} // namespace
