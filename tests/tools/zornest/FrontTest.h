// The command-line front with files in a folder of the test.

#pragma once

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

struct Outcome
{
    int code = -1;
    QString output;
    QString errors;
};

const char* const kSquares = R"({
  "items": [
    {"id": 7, "name": "square", "demand": 3, "allowed_orientations": [0],
     "shape": {"type": "simple_polygon", "data": [[0, 0], [10, 0], [10, 10], [0, 10], [0, 0]]}},
    {"id": 9, "name": "disc", "demand": 1, "orientation_deg": 30, "mirrored": true,
     "shape": {"type": "path", "contours": [{"start": [5, 0],
       "segs": [["A", -5, 0, 0, 0, "ccw"], ["A", 5, 0, 0, 0, "ccw"]]}]}}%1],
  "packagings": [{"id": 4, "name": "board", "quantity": 2, "width": 22, "length": 22, "cost": 3,
    "trims": {"left": 0.5}, "defects": []}],
  "params": {"item_separation": 0.5, "usage_rule": "BestSize", "stack_size": 1}})";

/// The program with files in a separate folder.
class FrontTest : public testing::Test
{
protected:
    QString GetPath(const QString& name) const { return m_folder.filePath(name); }
    QString Save(const QString& name, const QByteArray& content) const
    {
        QFile file(GetPath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return file.fileName();
    }
    QString SaveSquares(const QString& more = {}) const
    {
        return Save(QStringLiteral("squares.json"), QString::fromLatin1(kSquares).arg(more).toUtf8());
    }
    static Outcome Run(const QStringList& arguments)
    {
        return Start(QStringLiteral(ZORNEST_PROGRAM), arguments);
    }
    /// \param kilobytes  address space of the program
    static Outcome RunWithin(int kilobytes, const QString& argument)
    {
        return Start(QStringLiteral("/bin/sh"),
                     {QStringLiteral("-c"), QStringLiteral("ulimit -v %1; exec \"$@\"").arg(kilobytes),
                      QStringLiteral("sh"), QStringLiteral(ZORNEST_PROGRAM), argument});
    }
    static Outcome Start(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(120000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    QJsonObject ReadLayout(const QString& name) const
    {
        QFile file(GetPath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QJsonDocument::fromJson(file.readAll()).object();
    }

private:
    QTemporaryDir m_folder;
};
