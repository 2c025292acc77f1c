#include "operations/ZORTestCompReaderCmd.h"

#include "support/BenchTest.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompReader.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORSystem/ZORSysException.h>

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMetaClassInfo>

namespace {

constexpr char kXmlFilter[] = "Layup XML (*.xml)";
constexpr char kJsonFilter[] = "CompoST Layup (*.json)";

class ZORTestCompReaderCmdTest : public BenchTest
{
protected:
    ZORTestCompReaderCmdTest()
        : path(GetPath("layup.xml"))
    {
        Write(R"(<layups version="1" length="mm" angle="deg" stress="MPa" density="t/mm3" permeability="m2">)"
              R"(<layup/></layups>)");
    }

    void Write(const QByteArray& text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void Read() { Open("ZORTestCompReaderCmd"); }
    /// Chooses a filter, then the file.
    void AnswerWith(const QString& filter)
    {
        answers.Answer("QFileDialog", [this, filter](QDialog* shown) {
            auto* fileDialog = qobject_cast<QFileDialog*>(shown);
            fileDialog->selectNameFilter(filter);
            fileDialog->setDirectory(QFileInfo(path).absolutePath());
            fileDialog->findChild<QLineEdit*>("fileNameEdit")->setText(QFileInfo(path).fileName());
            shown->accept();
        });
    }
    QList<ZORCompLayup*> GetLayups() const
    {
        QList<ZORCompLayup*> layups;
        for (ZORFeatObject* child : GetContainer()->GetFeatureRoot("ZORCompRoot")->GetAllChildren()) {
            if (auto* layup = qobject_cast<ZORCompLayup*>(child))
                layups.append(layup);
        }
        return layups;
    }

    const QString path;
};

TEST_F(ZORTestCompReaderCmdTest, ClassTellsItsLabelAndNothingThatItCreates)
{
    const QMetaObject& metaObject = ZORTestCompReaderCmd::staticMetaObject;
    EXPECT_STREQ("Create Point", metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    EXPECT_EQ(-1, metaObject.indexOfClassInfo("createdTypes"));
}

TEST_F(ZORTestCompReaderCmdTest, DialogOffersAllFormatsOfTheSdk)
{
    QStringList filters;
    for (const QByteArray& format : ZORCompReader::GetSupportedFormats())
        filters.append(ZORCompReader::GetFormatFileExtensions(format));
    ASSERT_GE(filters.size(), 2);
    answers.CancelFile();
    Read();
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Open Composites Source File"), shown[0].title);
    EXPECT_EQ(filters, shown[0].filters);
    EXPECT_EQ(filters.constFirst(), shown[0].selectedFilter);
    EXPECT_FALSE(shown[0].isSaving);
}

TEST_F(ZORTestCompReaderCmdTest, CancelledFileDialogCreatesAndShowsNothing)
{
    answers.CancelFile();
    Read();
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(QStringList(), GetSettings()->allKeys());
}

TEST_F(ZORTestCompReaderCmdTest, FileOfTheSelectedFormatBecomesPartOfTheRoot)
{
    AnswerWith(kXmlFilter);
    Read();
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(1, GetLayups().size());
    AnswerWith(kXmlFilter);
    Read();
    EXPECT_EQ(2, GetLayups().size()) << "a second read replaces nothing";
}

TEST_F(ZORTestCompReaderCmdTest, FormatIsThatOfTheFilterNotOfTheFile)
{
    AnswerWith(kJsonFilter);
    EXPECT_THROW(Read(), ZORSysException);
    EXPECT_TRUE(GetLayups().isEmpty());
    EXPECT_EQ(QList<bool>(), finished);
}

TEST_F(ZORTestCompReaderCmdTest, ConsoleShowsWhatTheReaderThrows)
{
    OpenConsole();
    Write("<layups");
    AnswerWith(kXmlFilter);
    TriggerMenu("actionRead_Composites");
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith(QString("cannot read '%1': ").arg(path))) << errors[0].toStdString();
    EXPECT_TRUE(GetLayups().isEmpty());
}

} // namespace
