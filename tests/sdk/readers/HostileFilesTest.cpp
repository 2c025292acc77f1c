// Files that never end, cannot be waited for, are enormous or change while they are read: each reader ends at once with
// its message, within little memory.

#include "support/HostileFiles.h"

#include "support/MemoryLimit.h"
#include "support/Printers.h"

#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORComposites/ZORCompReader.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <future>

namespace {

constexpr qint64 kRoom = qint64(512) << 20;   // bytes of memory for a reader
constexpr qint64 kEnormous = qint64(4) << 30; // bytes of a file
constexpr unsigned kHang = 60;                // seconds

struct Reader
{
    const char* name;
    /// Throws what is wrong with the file.
    std::function<void(const QString& path)> read;
    /// Reason for an enormous file of zeros; %1 stands for the path.
    QString zeros;
    /// Reason in front of those of the system; %1 stands for the path.
    QString prefix = QStringLiteral("cannot open file '%1': ");
};

void PrintTo(const Reader& reader, std::ostream* out)
{
    *out << reader.name;
}

void OpenAndRead(const QString& path, const std::function<void(QIODevice&)>& read)
{
    ZORSysFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(path, file.errorString());
    read(file);
}

void ReadContainer(const QString& path)
{
    OpenAndRead(path, [](QIODevice& device) { ZORGeoContainer().Load(device); });
}

void ReadStl(const QString& path)
{
    OpenAndRead(path, [](QIODevice& device) {
        ZORGeoContainer container;
        ZORGeoStlLoader(&device).Load(&container, ZORSysValue::Millimeter);
    });
}

void ReadResult(const QString& path)
{
    ZORNestResultReader reader(path);
    if (!reader.Read(nullptr).IsValid())
        throw ZORSysException(reader.GetFailure());
}

void ReadComposites(const QString& path, const QByteArray& format)
{
    ZORFeatContainer container;
    auto* const root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot("ZORCompRoot"));
    ZORCompReadProcessor processor(root, false);
    ZORCompReader(path, format).Read(&processor);
}

/// Reads a source of parts as a job does.
void ReadSource(const QString& path, const QByteArray& provider)
{
    std::promise<QString> reason;
    ZORWorkProcessor processor;
    ZORWorkJob job;
    job.run = [&](const ZORWorkContext& context) {
        QStringList report;
        try {
            ZORNestSourceProvider::GetProvider(provider)->Translate(path, ZORNestTranslationInput(), context,
                                                                    &report);
            reason.set_value(QString());
        } catch (const ZORSysException& exception) {
            reason.set_value(exception.GetMessage());
        }
        return ZORWorkResult();
    };
    processor.AddJob(job);
    processor.Execute();
    const QString text = reason.get_future().get();
    if (!text.isEmpty())
        throw ZORSysException(text);
}

Reader MakeCompositesReader(const char* name, const QByteArray& format)
{
    return {name, [format](const QString& path) { ReadComposites(path, format); },
            QStringLiteral("cannot read '%1': the file is larger than 1073741824 bytes")};
}

Reader MakeSourceReader(const char* name, const QByteArray& provider, int megabytes)
{
    return {name, [provider](const QString& path) { ReadSource(path, provider); },
            QStringLiteral("file is larger than %1 MB").arg(megabytes)};
}

/// Reads a document of zornest as its users do.
void ReadInstance(const QString& path)
{
    const QByteArray command = "exec timeout -s KILL " + QByteArray::number(kHang)
                               + " '" ZORNEST_PROGRAM "' '" + QFile::encodeName(path) + "' 2>&1 >/dev/null";
    FILE* const output = popen(command.constData(), "r");
    QByteArray text;
    for (int byte = std::fgetc(output); byte != EOF; byte = std::fgetc(output))
        text.append(char(byte));
    if (pclose(output) != 3 << 8) // the code for bad instances
        _exit(1);
    throw ZORSysException(QString::fromUtf8(text.trimmed()));
}

class HostileFilesTest : public testing::TestWithParam<Reader>
{
protected:
    /// Reads a file in a process with little memory and time, and returns the message of the reader.
    QString Read(const QString& path) const
    {
        const QString answer = folder.filePath("answer");
        QFile::remove(answer);
        // Sanitizers need all addresses.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        constexpr qint64 room = qint64(1) << 46;
#else
        constexpr qint64 room = kRoom;
#endif
        const int result = RunWithMemory(room, [&] {
            alarm(kHang);
            QString message;
            try {
                GetParam().read(path);
            } catch (const ZORSysException& exception) {
                message = exception.GetMessage();
            }
            QFile file(answer);
            file.open(QIODevice::WriteOnly);
            file.write(message.toUtf8());
            file.close();
            return 0;
        });
        EXPECT_EQ(0, result) << "signal " << -result << " while reading " << path.toStdString();
        QFile file(answer);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                              : QStringLiteral("no answer");
    }
    /// Starts a process that changes a file until it is ended.
    pid_t ChangeForever(const QString& path, const std::function<void(QFile&)>& change) const
    {
        const pid_t child = fork();
        if (child != 0)
            return child;
        alarm(10 * kHang);
        static_cast<void>(nice(19)); // the reader has to get its time
        QFile file(path);
        file.open(QIODevice::ReadWrite | QIODevice::Unbuffered);
        for (;;)
            change(file);
    }
    static void End(pid_t child)
    {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }

    const QTemporaryDir folder;
};

TEST_P(HostileFilesTest, WhatWouldHaveToBeWaitedForIsRefused)
{
    const QString prefix = GetParam().prefix;
    const QStringList irregular = HostileFiles::MakeIrregular(folder.path());
    for (const QString& path : irregular)
        EXPECT_EQ(prefix.arg(path) + "it is not a regular file", Read(path));
    EXPECT_EQ(prefix.arg(folder.path()) + "it is a folder", Read(folder.path()));
    const QString missing = folder.filePath("missing");
    EXPECT_EQ(prefix.arg(missing) + "No such file or directory", Read(missing));
}

// The memory of a process is a regular file whose beginning can never be read.
TEST_P(HostileFilesTest, AnErrorOfTheDeviceIsReported)
{
    const QString path = QStringLiteral("/proc/self/mem");
    EXPECT_EQ(GetParam().prefix.arg(path) + "read error: Input/output error", Read(path));
}

TEST_P(HostileFilesTest, FourGigabytesOfZerosAreRefused)
{
    const QString path = HostileFiles::MakeZeros(folder.path(), kEnormous);
    const QString expected = GetParam().zeros;
    EXPECT_EQ(expected.contains("%1") ? expected.arg(path) : expected, Read(path));
}

// A reader that continues until nothing is left would never end.
TEST_P(HostileFilesTest, AFileThatKeepsGrowingEnds)
{
    const HostileFiles::GrowingFile file(folder.path(), QByteArray(1 << 20, ' '));
    for (int i = 0; i < 3; ++i)
        EXPECT_NE("no answer", Read(file.GetPath()));
}

// Touching the pages of a mapped file that are gone by then would end the process.
TEST_P(HostileFilesTest, AFileThatKeepsChangingItsLengthEndsNothing)
{
    const QString path = HostileFiles::MakeZeros(folder.path(), 1 << 20);
    const QByteArray blanks(1 << 20, ' ');
    const pid_t writer = ChangeForever(path, [&blanks](QFile& file) {
        file.seek(0);
        file.write(blanks);
        file.write(blanks);
        file.resize(0);
    });
    for (int i = 0; i < 10; ++i)
        EXPECT_NE("no answer", Read(path));
    End(writer);
}

const Reader kReaders[] = {
    {"Container", ReadContainer, "the file is not a container file"},
    {"Stl", ReadStl,
     "the STL content has no usable facet (0 of 0 facets used; left out: 4294967212 bytes behind the last "
     "facet)"},
    {"Result", ReadResult, "the file is not a result file"},
    MakeCompositesReader("LayupJson", "compost-json"),
    MakeCompositesReader("LayupXml", "layup-xml"),
    MakeSourceReader("Dxf", "dxf", 1024),
    MakeSourceReader("Svg", "svg", 256),
    MakeSourceReader("ContourXml", "contour-xml", 256),
    MakeSourceReader("NestingJson", "nesting-json", 128),
    {"InstanceJson", ReadInstance, "%1: file is larger than 128 MB", "%1: "},
};

INSTANTIATE_TEST_SUITE_P(Readers, HostileFilesTest, testing::ValuesIn(kReaders),
                         [](const auto& reader) { return std::string(reader.param.name); });

} // namespace
