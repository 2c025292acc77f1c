#include "exchange/ZORTestImportSTLCmd.h"

#include "StlFiles.h"
#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/BenchTest.h"
#include "support/HostileFiles.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QMetaClassInfo>
#include <QTableView>

#include <unistd.h>

namespace {

class ZORTestImportSTLCmdTest : public BenchTest
{
protected:
    ZORTestImportSTLCmdTest()
        : path(GetPath("tetrahedron.stl"))
    {
        WriteFile(path, MakeAsciiTetrahedron());
    }

    /// Runs the command by its class name, without a console.
    void Import() { Open("ZORTestImportSTLCmd"); }
    ZORGeoSurface* GetSurface(int index)
    {
        return qobject_cast<ZORGeoSurface*>(GetContainer()->GetGeometryByIndex(index));
    }
    QVariant GetSetting(const char* key)
    {
        return GetSettings()->value(QStringLiteral("Debug/ImportSTL/") + QLatin1String(key));
    }

    const QString path;
};

TEST_F(ZORTestImportSTLCmdTest, ClassTellsItsLabelAndWhatItCreates)
{
    const QMetaObject& metaObject = ZORTestImportSTLCmd::staticMetaObject;
    EXPECT_STREQ("Import STL Surface", metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    EXPECT_EQ(QList<QByteArray>({"ZORGeoSurface"}), ZORTestCommandRegistry::CreatedTypes(&metaObject));
}

TEST_F(ZORTestImportSTLCmdTest, FirstUseAsksForFileAndUnitAndImports)
{
    answers.AnswerFile(path);
    answers.AnswerItem("mm");
    Import();

    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ(QString("Open STL file"), shown[0].title);
    EXPECT_EQ(QStringList({"STL files (*.stl)"}), shown[0].filters);
    EXPECT_EQ(QString(), shown[0].fileName) << "no start path";
    EXPECT_FALSE(shown[0].isSaving);
    EXPECT_EQ(QString("Select Units"), shown[1].title);
    EXPECT_EQ(QString("Units"), shown[1].label);
    EXPECT_EQ(QStringList({"mm", "cm", "m", "in", "ft"}), shown[1].items);
    EXPECT_EQ(0, shown[1].currentIndex);
    EXPECT_FALSE(shown[1].isEditable);

    EXPECT_EQ(QList<bool>({true}), finished);
    ASSERT_EQ(1, GetContainer()->GetNumGeometry());
    ASSERT_NE(nullptr, GetSurface(0));
    EXPECT_EQ(4, GetSurface(0)->GetNumTriangles());
    EXPECT_TRUE(IsNear({1, 1, 1}, GetSurface(0)->GetBoundingBox().GetUpperPoint()));
}

TEST_F(ZORTestImportSTLCmdTest, StoresFileAndUnit)
{
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
    answers.AnswerFile(path);
    answers.AnswerItem("in");
    Import();
    EXPECT_EQ(QVariant(path), GetSetting("Dir"));
    EXPECT_EQ(QMetaType::QString, GetSetting("Dir").typeId());
    EXPECT_EQ(QVariant(3), GetSetting("Units"));
    EXPECT_EQ(QMetaType::Int, GetSetting("Units").typeId());
    EXPECT_EQ(2, GetSettings()->allKeys().size());
    EXPECT_TRUE(IsNear({25.4, 25.4, 25.4}, GetSurface(0)->GetBoundingBox().GetUpperPoint()));
}

TEST_F(ZORTestImportSTLCmdTest, NextImportStartsAtTheStoredFileAndUnit)
{
    GetSettings()->setValue("Debug/ImportSTL/Dir", path);
    GetSettings()->setValue("Debug/ImportSTL/Units", 1);
    answers.AnswerFile(path);
    answers.CancelInput();
    Import();
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ(QFileInfo(path).absolutePath(), shown[0].directory);
    EXPECT_EQ(QFileInfo(path).fileName(), shown[0].fileName) << "the stored path is that of a file";
    EXPECT_EQ(1, shown[1].currentIndex);
    EXPECT_TRUE(IsNear({10, 10, 10}, GetSurface(0)->GetBoundingBox().GetUpperPoint()));
}

TEST_F(ZORTestImportSTLCmdTest, CancelledUnitIsThePreselectedOne)
{
    answers.AnswerFile(path);
    answers.CancelInput();
    Import();
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_EQ(QVariant(0), GetSetting("Units"));
}

TEST_F(ZORTestImportSTLCmdTest, StoredUnitThatIsNoLengthCountsAsTheFirst)
{
    for (const int code : {5, 6, 99, -1}) {
        GetSettings()->setValue("Debug/ImportSTL/Units", code);
        answers.AnswerFile(path);
        answers.CancelInput();
        Import();
        EXPECT_EQ(0, answers.Take().constLast().currentIndex) << code;
        EXPECT_EQ(QVariant(0), GetSetting("Units")) << code;
    }
}

TEST_F(ZORTestImportSTLCmdTest, CancelledFileDoesNothing)
{
    answers.CancelFile();
    Import();
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestImportSTLCmdTest, FileThatVanishesIsReported)
{
    answers.AnswerFile(path, [this] { QFile::remove(path); });
    Import();
    const QList<MessageBoxCatcher::Box> errors = boxes.Take();
    ASSERT_EQ(1, errors.size());
    const MessageBoxCatcher::Box expected = {QMessageBox::Critical, "Error",
                                             "Cannot open the file for reading.", QMessageBox::Ok, nullptr};
    EXPECT_EQ(expected, errors[0]);
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestImportSTLCmdTest, BoxHasNoParentWhileAConsoleIsOpen)
{
    OpenConsole();
    answers.AnswerFile(path, [this] { QFile::remove(path); });
    TriggerMenu("_ImportSTLAction");
    const QList<MessageBoxCatcher::Box> expected{
        {QMessageBox::Critical, "Error", "Cannot open the file for reading.", QMessageBox::Ok, nullptr}};
    EXPECT_EQ(expected, boxes.Take());
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(console.data(), shown[0].parent);
}

TEST_F(ZORTestImportSTLCmdTest, DirectoryIsReported)
{
    answers.AnswerFile(path, [this] {
        QFile::remove(path);
        QDir().mkdir(path);
    });
    Import();
    EXPECT_EQ(QStringList({"Cannot open the file for reading."}), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestImportSTLCmdTest, PipeIsReported)
{
    answers.AnswerFile(HostileFiles::MakePipe(QFileInfo(path).absolutePath(), "pipe.stl"));
    Import();
    EXPECT_EQ(QStringList({"Cannot open the file for reading."}), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestImportSTLCmdTest, UnreadableFileIsReported)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    QFile::setPermissions(path, QFile::WriteOwner);
    answers.AnswerFile(path);
    Import();
    EXPECT_EQ(QStringList({"Cannot open the file for reading."}), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestImportSTLCmdTest, ConsoleIsTheParentOfTheQuestionsAndListsTheSurface)
{
    OpenConsole();
    answers.AnswerFile(path);
    answers.AnswerItem("mm");
    MenuAction("_ImportSTLAction")->trigger();
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ(console.data(), shown[0].parent);
    EXPECT_EQ(console.data(), shown[1].parent);
    EXPECT_EQ(1, InConsole<QTableView>("_ContTable")->model()->rowCount());
}

} // namespace
