// Fixture of the tests that run the program itself.

#pragma once

#include "HostTest.h"
#include "support/HostileDisk.h"
#include "support/MemoryLimit.h"

#include <QDir>
#include <QProcess>
#include <QtEndian>

class ProgramTest : public HostTest
{
public:
    /// Runs zorhost to its end.
    int Run(const QStringList& arguments, const QStringList& environment = {})
    {
        QProcess process;
        process.setProcessEnvironment(Environment(environment));
        process.setChildProcessModifier([this] {
            if (memoryLimit > 0)
                LimitAddresses(qint64(memoryLimit) * 1'000'000);
            if (fileLimit > 0)
                LimitFiles(fileLimit);
        });
        process.start(ZOR_TEST_HOST, arguments);
        EXPECT_TRUE(process.waitForFinished(120'000)) << process.errorString().toStdString();
        out = QString::fromLocal8Bit(process.readAllStandardOutput());
        err = QString::fromLocal8Bit(process.readAllStandardError());
        EXPECT_EQ(QProcess::NormalExit, process.exitStatus()) << err.toStdString();
        return process.exitCode();
    }
    int RunScript(const QByteArray& script, const QStringList& arguments = {},
                  const QStringList& environment = {})
    {
        return Run(QStringList({"--script", WriteFile("test.zorscript", script), "--settings",
                                GetPath("host.ini"), "--no-default-plugins"})
                       + arguments,
                   environment);
    }

    /// A binary file of so many facets that are all zero and take no place on the disk.
    QString WriteSparseStl(const QString& name, quint32 numFacets) const
    {
        const quint32 count = qToLittleEndian(numFacets);
        const QString path =
            WriteFile(name, QByteArray(80, ' ') + QByteArray(reinterpret_cast<const char*>(&count), 4));
        EXPECT_TRUE(QFile::resize(path, 84 + 50 * qint64(numFacets)));
        return path;
    }

    static QProcessEnvironment Environment(const QStringList& additions)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& addition : additions)
            environment.insert(addition.section('=', 0, 0), addition.section('=', 1));
        return environment;
    }
    /// Whether a process has a function for a signal.
    static bool CatchesSignal(qint64 process, int number)
    {
        QFile file(QStringLiteral("/proc/%1/status").arg(process));
        if (!file.open(QIODevice::ReadOnly))
            return false;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("SigCgt:"))
                return (line.mid(7).trimmed().toULongLong(nullptr, 16) >> (number - 1)) & 1;
        }
        return false;
    }

    int memoryLimit = 0; // megabytes; 0: none
    int fileLimit = 0;   // bytes; 0: none
    QString out;
    QString err;
};
