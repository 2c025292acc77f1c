#include "nesting/ZORTestNestVisualizeResultCmd.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"
#include "support/HostileDisk.h"
#include "support/HostileFiles.h"
#include "support/WarningCatcher.h"

#include <ZORNesting/ZORNestResultWriter.h>

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QInputDialog>
#include <QMetaClassInfo>

#include <functional>
#include <limits>

namespace {

using Segment = ZORNestResultSegment;

class ZORTestNestVisualizeResultCmdTest : public BenchTest
{
protected:
    ZORTestNestVisualizeResultCmdTest()
    {
        ZORNestResultItem item;
        item.AddShape(
            ZORNestResultShape({Segment::CreateCircle(Segment::ArcClockwise, {100, 50, 0}, {50, 50, 0})}));
        ZORNestResult result(ZORNestResult::Nesting);
        result.SetSheet({{0, 0, 0}, {200, 100, 0}});
        result.AddItem(item);
        EXPECT_GT(ZORNestResultWriter(path).Write(result), 0);
    }

    void AnswerNumber(int number)
    {
        answers.Answer("QInputDialog", [this, number](QDialog* shown) {
            auto* input = qobject_cast<QInputDialog*>(shown);
            shownNumbers.append(
                {input->intValue(), input->intMinimum(), input->intMaximum(), input->intStep()});
            input->setIntValue(number);
            input->accept();
        });
    }
    void Run(int width, int height)
    {
        answers.AnswerFile(path);
        AnswerNumber(width);
        AnswerNumber(height);
        answers.AnswerFile(picture);
        Open("ZORTestNestVisualizeResultCmd");
    }

    /// The calls of the image factory that \a run makes.
    static QStringList TraceImages(const std::function<void()>& run)
    {
        const QStringList calls = TraceCalls(run);
        QCoreApplication::processEvents();
        return calls.filter("::CreateImage(");
    }
    static QString MakeImageCall(const QSize& size)
    {
        return QStringLiteral("ZORVisRepFactory::CreateImage(%1, %2, [1], \"#000000\")")
            .arg(QString::number(size.width()), QString::number(size.height()));
    }

    const QString path = GetPath("sheet.msi");
    const QString picture = GetPath("sheet.png");
    QList<QList<int>> shownNumbers; // value, minimum, maximum, step
};

TEST_F(ZORTestNestVisualizeResultCmdTest, ClassTellsItsLabelAndCreatesNothing)
{
    const QMetaObject& metaObject = ZORTestNestVisualizeResultCmd::staticMetaObject;
    EXPECT_STREQ("Create Nesting Result Image",
                 metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    EXPECT_EQ(-1, metaObject.indexOfClassInfo("createdTypes"));
}

TEST_F(ZORTestNestVisualizeResultCmdTest, SavesAPictureOfTheChosenSizeOnBlack)
{
    Run(300, 200);
    const QImage image(picture, "PNG");
    ASSERT_EQ(QSize(300, 200), image.size());
    EXPECT_EQ(qRgb(0, 0, 0), image.pixel(1, 1));
    EXPECT_NE(qRgb(0, 0, 0), image.pixel(80, 100));  // within the circle
    EXPECT_EQ(qRgb(0, 0, 0), image.pixel(220, 100)); // the free half of the sheet
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestNestVisualizeResultCmdTest, AsksForFilesAndNumbers)
{
    Run(30, 20);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(4, shown.size());
    EXPECT_EQ(QStringList({"MSI files (*.msi)"}), shown[0].filters);
    EXPECT_EQ(QString("Int"), shown[1].title);
    EXPECT_EQ(QString("Width"), shown[1].label);
    EXPECT_EQ(QString("Int"), shown[2].title);
    EXPECT_EQ(QString("Height"), shown[2].label);
    EXPECT_EQ(QStringList({"PNG Images (*.png)"}), shown[3].filters);
    EXPECT_TRUE(shown[3].isSaving);
    constexpr int kLargest = std::numeric_limits<int>::max();
    EXPECT_EQ((QList<QList<int>>{{0, -kLargest, kLargest, 1}, {0, -kLargest, kLargest, 1}}), shownNumbers);
}

TEST_F(ZORTestNestVisualizeResultCmdTest, SizesWithoutAreaSaveNothing)
{
    for (const QSize& size :
         {QSize(0, 100), QSize(100, 0), QSize(-5, 100), QSize(-2147483647, -2147483647)}) {
        Run(size.width(), size.height());
        EXPECT_FALSE(QFile::exists(picture));
    }
}

TEST_F(ZORTestNestVisualizeResultCmdTest, PassesEverySizeOnUnchanged)
{
    for (const QSize& size :
         {QSize(0, 0), QSize(0, 100), QSize(100, 0), QSize(-5, 7), QSize(3, -2147483647), QSize(30, 20)}) {
        const QStringList calls = TraceImages([&] { Run(size.width(), size.height()); });
        EXPECT_EQ(QStringList(MakeImageCall(size)), calls);
    }
}

TEST_F(ZORTestNestVisualizeResultCmdTest, CancelledNumbersCountAsZero)
{
    answers.AnswerFile(path);
    answers.CancelInput();
    answers.CancelInput();
    answers.AnswerFile(picture);
    const QStringList calls = TraceImages([this] { Open("ZORTestNestVisualizeResultCmd"); });
    EXPECT_EQ(QStringList(MakeImageCall(QSize(0, 0))), calls);
    EXPECT_FALSE(QFile::exists(picture));
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestNestVisualizeResultCmdTest, AFullDiskIsSilentAndKeepsThePicture)
{
    Run(30, 20);
    finished.clear();
    const WarningCatcher warnings;
    {
        const FileSizeLimit limit(10);
        Run(300, 200);
    }
    EXPECT_EQ(QStringList(), warnings.GetLines());
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(QSize(30, 20), QImage(picture).size());
}

TEST_F(ZORTestNestVisualizeResultCmdTest, ACancelledPictureFileIsSilent)
{
    const WarningCatcher warnings;
    answers.AnswerFile(path);
    AnswerNumber(30);
    AnswerNumber(20);
    answers.CancelFile();
    Open("ZORTestNestVisualizeResultCmd");
    EXPECT_EQ(QStringList(), warnings.GetLines());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestNestVisualizeResultCmdTest, AnInvalidFileIsReported)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no result");
    file.close();
    answers.AnswerFile(path);
    Open("ZORTestNestVisualizeResultCmd");
    EXPECT_EQ(QStringList({"Could not read the file"}), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestNestVisualizeResultCmdTest, APipeIsNeitherReadNorWritten)
{
    const QString pipe = HostileFiles::MakePipe(QFileInfo(path).absolutePath(), "pipe.png");
    answers.AnswerFile(pipe);
    Open("ZORTestNestVisualizeResultCmd");
    EXPECT_EQ(QStringList({"Could not read the file"}), boxes.TakeErrors());
    answers.AnswerFile(path);
    AnswerNumber(20);
    AnswerNumber(10);
    answers.AnswerFile(picture, [this, &pipe] {
        QFile::remove(picture);
        QFile::rename(pipe, picture);
    });
    Open("ZORTestNestVisualizeResultCmd");
    EXPECT_EQ(QStringList(), boxes.TakeErrors()) << "a picture that cannot be saved is silent";
    EXPECT_EQ(QList<bool>({false, true}), finished);
    EXPECT_TRUE(QFileInfo::exists(picture));
    EXPECT_FALSE(QFileInfo(picture).isFile());
}

TEST_F(ZORTestNestVisualizeResultCmdTest, ACancelledDialogIsReportedToo)
{
    answers.CancelFile();
    Open("ZORTestNestVisualizeResultCmd");
    EXPECT_EQ(QStringList({"Could not read the file"}), boxes.TakeErrors());
}

TEST_F(ZORTestNestVisualizeResultCmdTest, RunsFromTheMenu)
{
    OpenConsole();
    answers.AnswerFile(path);
    AnswerNumber(40);
    AnswerNumber(20);
    answers.AnswerFile(picture);
    MenuAction("actionMSI_to_PNG")->trigger();
    EXPECT_EQ(QSize(40, 20), QImage(picture).size());
}

} // namespace
