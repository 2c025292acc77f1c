#include "exchange/ZORTestExportSTLDlg.h"

#include "StlFiles.h"
#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/BenchTest.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMetaClassInfo>
#include <QPushButton>

namespace {

class ZORTestExportSTLDlgTest : public BenchTest
{
protected:
    ZORTestExportSTLDlgTest()
        : path(GetPath("out.stl"))
    {
    }

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestExportSTLDlg")); }
    /// OK, and the three questions that follow it; an empty answer cancels its question.
    void Export(const QString& unit, const QString& type)
    {
        answers.AnswerFile(path);
        AnswerOrCancel(unit);
        AnswerOrCancel(type);
        PressOk();
    }
    QVariant GetSetting(const char* key)
    {
        return GetSettings()->value(QStringLiteral("Debug/ExportSTL/") + QLatin1String(key));
    }
    bool IsOpen() const { return dialog && dialog->isVisible(); }

    const QString path;

private:
    void AnswerOrCancel(const QString& item)
    {
        if (item.isEmpty())
            answers.CancelInput();
        else
            answers.AnswerItem(item);
    }
};

TEST_F(ZORTestExportSTLDlgTest, FormAsksForASurface)
{
    const QMetaObject& metaObject = ZORTestExportSTLDlg::staticMetaObject;
    EXPECT_STREQ("Export STL Surface", metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    AddPoint("P");
    AddSurface("S");
    OpenDialog();
    EXPECT_EQ(QString("Export Surface STL File"), dialog->windowTitle());
    const auto selectors = dialog->findChildren<ZORTestGeometrySelector*>();
    ASSERT_EQ(1, selectors.size());
    EXPECT_EQ(QByteArray("ZORGeoSurface"), selectors[0]->property("geoType").toByteArray());
    EXPECT_EQ(QString("Surface: "), selectors[0]->findChild<QLabel*>("_Label")->text());
    const auto* combo = selectors[0]->findChild<QComboBox*>("_Combo");
    ASSERT_EQ(1, combo->count());
    EXPECT_EQ(QString("S"), combo->currentText());
    PressCancel();
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestExportSTLDlgTest, FirstUseAsksForFileUnitAndType)
{
    AddSurface("S");
    OpenDialog();
    Export({}, {}); // cancelled: the pre-selected entries

    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(3, shown.size());
    EXPECT_EQ(QString("Save STL file"), shown[0].title);
    EXPECT_EQ(QStringList({"STL files (*.stl)"}), shown[0].filters);
    EXPECT_EQ(QString(), shown[0].fileName);
    EXPECT_TRUE(shown[0].isSaving);
    EXPECT_EQ(QString("Select Units"), shown[1].title);
    EXPECT_EQ(QString("Units"), shown[1].label);
    EXPECT_EQ(QStringList({"mm", "cm", "m", "in", "ft"}), shown[1].items);
    EXPECT_EQ(0, shown[1].currentIndex);
    EXPECT_EQ(QString("Select File Type"), shown[2].title);
    EXPECT_EQ(QString("File Type"), shown[2].label);
    EXPECT_EQ(QStringList({"binary STL", "ascii STL"}), shown[2].items);
    EXPECT_EQ(0, shown[2].currentIndex);
    EXPECT_FALSE(shown[2].isEditable);

    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_TRUE(dialog.isNull());
    EXPECT_EQ(84 + 2 * 50, ReadFile(path).size()) << "binary";
}

TEST_F(ZORTestExportSTLDlgTest, StoresFileUnitAndType)
{
    AddSurface("S");
    OpenDialog();
    Export("ft", "ascii STL");
    EXPECT_EQ(QVariant(path), GetSetting("Dir"));
    EXPECT_EQ(QMetaType::QString, GetSetting("Dir").typeId());
    EXPECT_EQ(QVariant(4), GetSetting("Units"));
    EXPECT_EQ(QMetaType::Int, GetSetting("Units").typeId());
    EXPECT_EQ(QVariant(QString("ascii STL")), GetSetting("Type"));
    EXPECT_EQ(QMetaType::QString, GetSetting("Type").typeId());
    EXPECT_EQ(3, GetSettings()->allKeys().size());
}

TEST_F(ZORTestExportSTLDlgTest, NextExportStartsFromTheStoredValues)
{
    AddSurface("S");
    GetSettings()->setValue("Debug/ExportSTL/Dir", path);
    GetSettings()->setValue("Debug/ExportSTL/Units", 3);
    GetSettings()->setValue("Debug/ExportSTL/Type", "ascii STL");
    OpenDialog();
    Export({}, {});
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    EXPECT_EQ(QFileInfo(path).absolutePath(), shown[0].directory);
    EXPECT_EQ(QString("out.stl"), shown[0].fileName);
    EXPECT_EQ(3, shown[1].currentIndex);
    EXPECT_EQ(1, shown[2].currentIndex);
    EXPECT_TRUE(ReadFile(path).startsWith("solid"));
}

TEST_F(ZORTestExportSTLDlgTest, UnknownStoredTypeCountsAsBinary)
{
    AddSurface("S");
    GetSettings()->setValue("Debug/ExportSTL/Type", "ASCII STL");
    OpenDialog();
    Export({}, {});
    EXPECT_EQ(0, answers.Take().constLast().currentIndex);
    EXPECT_EQ(84 + 2 * 50, ReadFile(path).size());
    EXPECT_EQ(QVariant(QString("binary STL")), GetSetting("Type"));
}

TEST_F(ZORTestExportSTLDlgTest, WhatIsExportedComesBackByImport)
{
    auto* surface = AddSurface("S");
    for (const QString& type : QStringList({"binary STL", "ascii STL"})) {
        for (const QString& unit : QStringList({"mm", "in", "m"})) {
            QFile::remove(path);
            OpenDialog();
            Select("_SurfaceSel", "S");
            Export(unit, type);
            answers.AnswerFile(path);
            answers.AnswerItem(unit);
            Open("ZORTestImportSTLCmd");

            ASSERT_EQ(2, GetContainer()->GetNumGeometry())
                << type.toStdString() << ", " << unit.toStdString();
            auto* back = qobject_cast<ZORGeoSurface*>(GetContainer()->GetGeometryByIndex(1));
            ASSERT_NE(nullptr, back);
            EXPECT_EQ(surface->GetNumTriangles(), back->GetNumTriangles());
            EXPECT_EQ(surface->GetVertexArray().size(), back->GetVertexArray().size());
            const ZORMathPoint upper = back->GetBoundingBox().GetUpperPoint();
            EXPECT_NEAR(1, upper.GetX(), 1e-7) << type.toStdString() << ", " << unit.toStdString();
            EXPECT_NEAR(1, upper.GetY(), 1e-7) << type.toStdString() << ", " << unit.toStdString();
            back->RemoveNoReferences();
        }
    }
}

TEST_F(ZORTestExportSTLDlgTest, CoordinatesInTheFileAreInTheChosenUnit)
{
    auto* surface = new ZORGeoSurface(GetContainer(), {{0, 0, 0}, {254, 0, 0}, {0, 25.4, 0}}, {{0, 1, 2}});
    surface->setObjectName("S");
    surface->Initialize();
    OpenDialog();
    Export("in", "ascii STL");
    const QByteArray text = ReadFile(path);
    EXPECT_TRUE(text.contains("vertex 10 0 0")) << text.constData();
    EXPECT_TRUE(text.contains("vertex 0 1 0")) << text.constData();
}

TEST_F(ZORTestExportSTLDlgTest, MissingSurfaceIsReportedAndTheDialogStaysOpen)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Surface selection invalid"}), boxes.TakeErrors());
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(finished.isEmpty());

    // The next OK starts anew.
    AddSurface("S");
    dialog->findChild<ZORTestGeometrySelector*>()->OnReload();
    Export({}, {});
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(ZORTestExportSTLDlgTest, GeometryThatIsNoSurfaceIsReported)
{
    AddSurface("S");
    OpenDialog();
    auto* combo = dialog->findChild<ZORTestGeometrySelector*>()->findChild<QComboBox*>("_Combo");
    combo->addItem("wrong", QVariant::fromValue<ZORGeoGeometry*>(AddPoint("P")));
    combo->setCurrentIndex(1);
    PressOk();
    EXPECT_EQ(QStringList({"Surface selection invalid"}), boxes.TakeErrors());
    EXPECT_TRUE(answers.Take().isEmpty()) << "no file is asked for";
    EXPECT_TRUE(IsOpen());
}

TEST_F(ZORTestExportSTLDlgTest, CancelledFileLeavesTheDialogOpenAndWritesNothing)
{
    AddSurface("S");
    OpenDialog();
    answers.CancelFile();
    PressOk();
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(finished.isEmpty());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
    PressCancel();
    EXPECT_TRUE(dialog.isNull()) << "Cancel closes it all the same";
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestExportSTLDlgTest, FailureOfTheWriterIsShownAndCloses)
{
    AddSurface("S");
    OpenDialog();
    answers.AnswerFile(path, [this] { QDir().mkdir(path); }); // no file can be written there now
    answers.CancelInput();
    answers.CancelInput();
    PressOk();
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_FALSE(errors[0].isEmpty());
    EXPECT_TRUE(dialog.isNull());
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty()) << "a failed export is not remembered";
}

TEST_F(ZORTestExportSTLDlgTest, SurfaceThatDiesBehindTheQuestionsIsReported)
{
    auto* surface = AddSurface("S");
    OpenDialog();
    answers.AnswerFile(path, [surface] { surface->RemoveNoReferences(); });
    answers.CancelInput();
    answers.CancelInput();
    PressOk();
    EXPECT_EQ(QStringList({"surface is null"}), boxes.TakeErrors());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(ZORTestExportSTLDlgTest, ExistingFileIsReplaced)
{
    WriteFile(path, QByteArray(10000, 'x'));
    AddSurface("S");
    OpenDialog();
    Export("mm", "binary STL");
    EXPECT_EQ(84 + 2 * 50, ReadFile(path).size());
}

TEST_F(ZORTestExportSTLDlgTest, ConsoleIsTheParentOfDialogAndQuestions)
{
    AddSurface("S");
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("_ExportSTLAction"));
    EXPECT_EQ(console.data(), dialog->parentWidget());
    Export({}, {});
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(3, shown.size());
    for (const DialogAnswerer::Shown& question : shown)
        EXPECT_EQ(console.data(), question.parent) << question.title.toStdString();
}

TEST_F(ZORTestExportSTLDlgTest, TwoDialogsWorkSideBySide)
{
    AddSurface("A");
    OpenDialog();
    const QPointer<ZORTestDialog> first = dialog;
    OpenDialog();
    const QPointer<ZORTestDialog> second = dialog;
    ASSERT_NE(first, second);
    PressCancel();
    EXPECT_TRUE(second.isNull());
    ASSERT_FALSE(first.isNull());
    dialog = first;
    Export({}, {});
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(QList<bool>({false, true, true}), finished);
}

} // namespace
