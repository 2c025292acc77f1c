#include "nesting/ZORTestWriteMSIFileCmd.h"

#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/BenchTest.h"
#include "support/HostileDisk.h"
#include "support/WarningCatcher.h"

#include <ZORNesting/ZORNestResultWriter.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMetaClassInfo>

namespace {

class ZORTestWriteMSIFileCmdTest : public BenchTest
{
protected:
    QString WriteResult(const QString& name, int numItems = 2)
    {
        ZORNestResult result(ZORNestResult::Translation);
        result.SetStackSize(numItems);
        for (int i = 0; i < numItems; ++i) {
            ZORNestResultItem item(QStringLiteral("Part %1").arg(i));
            item.AddShape(ZORNestResultShape({ZORNestResultSegment::CreateCircle(
                ZORNestResultSegment::ArcClockwise, {0.1, 1.0 / 3, 0}, {i + 0.7, 2, 0})}));
            result.AddItem(item);
        }
        EXPECT_GT(ZORNestResultWriter(GetPath(name)).Write(result), 0);
        return GetPath(name);
    }
    QByteArray Bytes(const QString& name)
    {
        QFile file(GetPath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    /// The result files of the test's folder.
    QStringList Files() { return QDir(GetPath(QString())).entryList({"*.msi"}, QDir::Files, QDir::Name); }
    void Rewrite(const QString& path)
    {
        answers.AnswerFile(path);
        Open("ZORTestWriteMSIFileCmd");
    }
};

TEST_F(ZORTestWriteMSIFileCmdTest, ClassTellsItsLabelAndEstablishedTypes)
{
    const QMetaObject& metaObject = ZORTestWriteMSIFileCmd::staticMetaObject;
    EXPECT_STREQ("Save to MSI file", metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    EXPECT_EQ(QList<QByteArray>({"ZORGeoSurface"}), ZORTestCommandRegistry::CreatedTypes(&metaObject));
}

TEST_F(ZORTestWriteMSIFileCmdTest, WritesTheSameBytesBesideTheFile)
{
    Rewrite(WriteResult("part.msi"));
    EXPECT_EQ(Bytes("part.msi"), Bytes("part_2.msi"));
    EXPECT_EQ(QList<bool>({true}), finished);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QStringList({"MSI files (*.msi)"}), shown[0].filters);
    EXPECT_EQ(nullptr, shown[0].parent);
}

TEST_F(ZORTestWriteMSIFileCmdTest, DropsOnlyTheLastExtension)
{
    Rewrite(WriteResult("sheet.old.msi"));
    EXPECT_EQ(Bytes("sheet.old.msi"), Bytes("sheet.old_2.msi"));
}

TEST_F(ZORTestWriteMSIFileCmdTest, ASecondTimeReplacesTheCopy)
{
    Rewrite(WriteResult("part.msi", 1));
    Rewrite(WriteResult("part.msi", 5));
    EXPECT_EQ(Bytes("part.msi"), Bytes("part_2.msi"));
    Rewrite(GetPath("part_2.msi"));
    EXPECT_EQ(Bytes("part.msi"), Bytes("part_2_2.msi"));
    EXPECT_EQ(QStringList({"part.msi", "part_2.msi", "part_2_2.msi"}), Files());
}

TEST_F(ZORTestWriteMSIFileCmdTest, AnInvalidFileEndsSilently)
{
    QFile file(GetPath("part.msi"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no result");
    file.close();
    WriteResult("part_2.msi");
    const QByteArray before = Bytes("part_2.msi");
    Rewrite(file.fileName());
    EXPECT_EQ(before, Bytes("part_2.msi"));
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestWriteMSIFileCmdTest, ACancelledDialogEndsSilently)
{
    answers.CancelFile();
    Open("ZORTestWriteMSIFileCmd");
    EXPECT_EQ(QStringList(), Files());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestWriteMSIFileCmdTest, AFailedWriteEndsSilently)
{
    // A folder in the place of the copy cannot be replaced by a file.
    ASSERT_TRUE(QDir().mkpath(GetPath("part_2.msi/inner")));
    Rewrite(WriteResult("part.msi"));
    EXPECT_TRUE(QDir(GetPath("part_2.msi/inner")).exists());
    EXPECT_EQ(QStringList({"part.msi"}), Files());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestWriteMSIFileCmdTest, AFullDiskIsAWarningOfTheSdkOnly)
{
    const QString part = WriteResult("part.msi");
    Rewrite(part);
    finished.clear();
    const WarningCatcher warnings;
    {
        const FileSizeLimit limit(10);
        Rewrite(part);
    }
    EXPECT_EQ(QStringList("zor.nesting: result file '" + GetPath("part_2.msi")
                          + "' is not written: cannot write the result file: File too large"),
              warnings.GetLines());
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(QStringList("part.msi"), Files()) << "the copy is removed before it is written";
}

TEST_F(ZORTestWriteMSIFileCmdTest, RunsFromTheMenu)
{
    OpenConsole();
    answers.AnswerFile(WriteResult("part.msi"));
    MenuAction("actionSave_MSI_File")->trigger();
    EXPECT_EQ(Bytes("part.msi"), Bytes("part_2.msi"));
}

} // namespace
