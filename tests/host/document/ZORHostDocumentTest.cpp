// Tests of the document, its file and its title.

#include "document/ZORHostDocument.h"

#include "DocumentTest.h"
#include "base/ZORHostWindowTitle.h"
#include "support/HostileDisk.h"

#include <ZORGeometry/ZORGeoSurface.h>

#include <QDir>

namespace {

class ZORHostDocumentTest : public DocumentTest
{
protected:
    QString Title() const { return ZORHostWindowTitle::GetShown(&window); }
    /// Writes a container file with one box as another program would.
    void WriteByOthers(const QString& path)
    {
        ZORFeatContainer container;
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        container.Save(file);
    }
};

TEST_F(ZORHostDocumentTest, TheTitleNamesTheFileAndMarksChanges)
{
    EXPECT_EQ(QString("Untitled - Zorvane Host"), Title());
    AddBox("Box");
    EXPECT_EQ(QString("Untitled* - Zorvane Host"), Title());
    const QString file = SaveAs("wing.ZORCont");
    EXPECT_EQ(QString("wing.ZORCont - Zorvane Host"), Title());
    EXPECT_EQ(file, GetDocument().GetFile());
    AddBox("Other");
    EXPECT_EQ(QString("wing.ZORCont* - Zorvane Host"), Title());
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_EQ(QString("wing.ZORCont - Zorvane Host"), Title());
    Trigger("_CloseDocumentAction");
    EXPECT_EQ(QString("Untitled - Zorvane Host"), Title());
    EXPECT_EQ(0, CountGeometries());
}

TEST_F(ZORHostDocumentTest, NamesMayHoldMarksPercentSignsAndAmpersands)
{
    for (const QString& name :
         {QStringLiteral("a[*].ZORCont"), QStringLiteral("a[*][*]b.ZORCont"),
          QStringLiteral("%1 & %2.ZORCont"), QStringLiteral("<b>x.ZORCont"), QStringLiteral("[*]")}) {
        GetDocument().MarkSaved(GetPath(name), GetDocument().GetNumChanges());
        EXPECT_EQ(name + " - Zorvane Host", Title());
        AddBox("Box");
        EXPECT_EQ(name + "* - Zorvane Host", Title());
        PressInNextBox(QMessageBox::Cancel);
        EXPECT_FALSE(window.close());
        const QList<MessageBoxCatcher::Box> shown = boxes.Take();
        ASSERT_EQ(1, shown.size());
        EXPECT_EQ("'" + name + "' has changes that are in no file yet. Save them?", shown[0].text);
        EXPECT_EQ(QString("Zorvane Host"), ZORHostWindowTitle::GetKind(&window));
    }
}

TEST_F(ZORHostDocumentTest, SaveWritesTheFileOfTheDocumentWithoutADialog)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    const QByteArray before = ReadFile(file);
    AddBox("Other");
    Trigger("_SaveAction");
    EXPECT_NE(before, ReadFile(file));
    EXPECT_FALSE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentTest, SaveAsksForTheNameOfAnUntitledDocument)
{
    AddBox("Box");
    answers.CancelFile();
    EXPECT_FALSE(GetCommands().Save());
    EXPECT_TRUE(GetDocument().IsModified());
    answers.AnswerFile(GetPath("new.ZORCont"));
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_EQ(GetPath("new.ZORCont"), GetDocument().GetFile());
}

TEST_F(ZORHostDocumentTest, ADocumentFromAForeignFileIsUntitledAndSaveProposesItsName)
{
    ASSERT_TRUE(GetCommands().Open(WriteTetrahedron("part.stl")));
    EXPECT_EQ(QString("Untitled - Zorvane Host"), Title());
    answers.CancelFile();
    EXPECT_FALSE(GetCommands().Save());
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("part.ZORCont"), shown[0].fileName);
    EXPECT_EQ(QFileInfo(GetPath("part.stl")).absolutePath(), shown[0].directory);
}

TEST_F(ZORHostDocumentTest, OthersThatSaveAndLoadTheContainerNeitherChangeTheFileNorClearTheMark)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    QFile other(GetPath("other.ZORCont"));
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    GetEnvironment()->GetContainer()->Save(other);
    EXPECT_FALSE(GetDocument().IsModified());
    ASSERT_TRUE(other.seek(0));
    GetEnvironment()->GetContainer()->Load(other);
    EXPECT_TRUE(GetDocument().IsModified());
    ASSERT_TRUE(other.resize(0) && other.seek(0));
    GetEnvironment()->GetContainer()->Save(other);
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_EQ(file, GetDocument().GetFile());
}

TEST_F(ZORHostDocumentTest, ACopyKeepsTheFileAndTheMark)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    AddBox("Other");
    answers.AnswerFile(GetPath("copy"));
    Trigger("_SaveCopyAction");
    EXPECT_EQ(file, GetDocument().GetFile());
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_NE(ReadFile(file), ReadFile(GetPath("copy.ZORCont")));
    answers.AnswerFile(file);
    Trigger("_SaveCopyAction");
    EXPECT_FALSE(GetDocument().IsModified()) << "its own file is up to date now";
    EXPECT_EQ(ReadFile(file), ReadFile(GetPath("copy.ZORCont")));
}

TEST_F(ZORHostDocumentTest, EveryNameGetsTheSuffixAndNoFileIsReplacedWithoutAQuestion)
{
    AddBox("Box");
    EXPECT_EQ(GetPath("part.v2"), SaveAs("part.v2"));
    EXPECT_TRUE(QFile::exists(GetPath("part.v2.ZORCont")));
    EXPECT_FALSE(QFile::exists(GetPath("part.v2")));
    EXPECT_EQ(GetPath("part.v2.ZORCont"), GetDocument().GetFile());
    const QString precious = WriteFile("part.v3.ZORCont", "precious");
    answers.AnswerFile(GetPath("part.v3"));
    answers.CancelFile(); // after No, the default
    EXPECT_FALSE(GetCommands().SaveAs());
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_EQ(QByteArray("precious"), ReadFile(precious));
    answers.AnswerFile(GetPath("part.v3"));
    boxes.whileShown = [] { // the dialog for the name is the first modal one
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        box->button(QMessageBox::Yes)->click();
    };
    EXPECT_TRUE(GetCommands().SaveAs());
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_NE(QByteArray("precious"), ReadFile(precious));
}

TEST_F(ZORHostDocumentTest, OpenReplacesAndImportAdds)
{
    AddBox("Box");
    const QString file = SaveAs("box.ZORCont");
    EXPECT_TRUE(GetCommands().Import(WriteTetrahedron("part.stl")));
    EXPECT_EQ(2, CountGeometries());
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_EQ(file, GetDocument().GetFile());
    PressInNextBox(QMessageBox::Discard);
    EXPECT_TRUE(GetCommands().Open(file));
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_EQ(1, CountGeometries());
    EXPECT_EQ(1, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_FALSE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentTest, AFileThatCannotBeOpenedLeavesTheDocumentAsItWas)
{
    AddBox("Box");
    const QString file = SaveAs("box.ZORCont");
    for (const QString& bad : {WriteFile("damaged.ZORCont", ReadFile(file).left(200)), GetPath("missing.stl"),
                               GetPath("."), WriteFile("empty.stl", {})}) {
        EXPECT_FALSE(GetCommands().Open(bad)) << bad.toStdString();
        EXPECT_FALSE(GetCommands().Import(bad)) << bad.toStdString();
        EXPECT_EQ(2, boxes.TakeErrors().size());
        EXPECT_EQ(1, CountGeometries());
        EXPECT_EQ(file, GetDocument().GetFile());
        EXPECT_FALSE(GetDocument().IsModified()) << bad.toStdString();
    }
}

TEST_F(ZORHostDocumentTest, CancelAtAQuestionChangesNothing)
{
    AddBox("Box");
    const QString other = WriteTetrahedron("part.stl");
    const std::function<void()> questions[] = {
        [&] { GetCommands().New(); }, [&] { GetCommands().Open(other); }, [&] { window.close(); },
        [&] { Trigger("_CloseDocumentAction"); }, [&] { Trigger("_QuitAction"); }};
    for (const auto& ask : questions) {
        PressInNextBox(QMessageBox::Cancel);
        ask();
        EXPECT_EQ(1, boxes.Take().size());
        answers.CancelFile(); // after Save, the default
        ask();
        EXPECT_EQ(1, boxes.Take().size());
        EXPECT_EQ(1, CountGeometries());
        EXPECT_TRUE(GetDocument().IsModified());
        EXPECT_TRUE(window.isVisible());
    }
}

TEST_F(ZORHostDocumentTest, TheFirstFileIsOpenedInAnEmptyDocumentAndTheOthersAreImported)
{
    AddBox("Box");
    const QString document = SaveAs("box.ZORCont");
    const QString part = WriteTetrahedron("part.stl");
    EXPECT_TRUE(GetCommands().New());
    EXPECT_TRUE(GetCommands().Add({document, part}));
    EXPECT_EQ(document, GetDocument().GetFile());
    EXPECT_EQ(2, CountGeometries());
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_TRUE(GetCommands().Add({document}));
    EXPECT_EQ(3, CountGeometries());
    EXPECT_EQ(document, GetDocument().GetFile());
}

TEST_F(ZORHostDocumentTest, AnEmptyFirstFileIsTheDocumentToo)
{
    const QString empty = GetPath("empty.ZORCont");
    WriteByOthers(empty);
    EXPECT_TRUE(GetCommands().Add({empty, WriteTetrahedron("part.stl")}));
    EXPECT_EQ(empty, GetDocument().GetFile());
    EXPECT_TRUE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentTest, AFileThatOthersHaveChangedIsReplacedOnlyAfterAQuestion)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    AddBox("Other");
    WriteByOthers(file);
    const QByteArray theirs = ReadFile(file);
    EXPECT_FALSE(GetCommands().Save()); // Cancel is the default
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ("Another program has changed '" + file
                  + "' since it was opened or saved here. Saving replaces these changes.",
              shown[0].text);
    EXPECT_EQ(theirs, ReadFile(file));
    EXPECT_TRUE(GetDocument().IsModified());
    PressText("Overwrite");
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_NE(theirs, ReadFile(file));
    EXPECT_TRUE(GetCommands().Save()) << "what was written here is not a change of others";
}

TEST_F(ZORHostDocumentTest, AFileThatOthersHaveChangedCanBeLeftAlone)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    WriteByOthers(file);
    const QByteArray theirs = ReadFile(file);
    answers.AnswerFile(GetPath("mine.ZORCont"));
    PressText("Save As...");
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_EQ(theirs, ReadFile(file));
    EXPECT_EQ(GetPath("mine.ZORCont"), GetDocument().GetFile());
}

TEST_F(ZORHostDocumentTest, TwoHostsWithTheSameDocumentDoNotReplaceEachOthersWorkUnasked)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    ZORHostDocument other(nullptr); // as another host opens it
    other.MarkOpened(file);
    EXPECT_FALSE(other.IsFileChangedByOthers());
    AddBox("Other");
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_TRUE(other.IsFileChangedByOthers());
    EXPECT_FALSE(GetDocument().IsFileChangedByOthers());
}

TEST_F(ZORHostDocumentTest, AFileThatOthersHaveRemovedIsWrittenAgain)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_TRUE(QFile::exists(file));
}

TEST_F(ZORHostDocumentTest, AFileThatCannotBeWrittenKeepsTheMark)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(QDir().mkdir(file)); // a folder takes its place
    AddBox("Other");
    PressText("Overwrite");
    EXPECT_FALSE(GetCommands().Save());
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ("Cannot write '" + file + "': it is a folder", shown[1].text);
    EXPECT_TRUE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentTest, AReadOnlyFileKeepsItsContentAndTheMark)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    const QByteArray before = ReadFile(file);
    AddBox("Other");
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadOther));
    {
        const WithoutRoot user;
        EXPECT_FALSE(GetCommands().Save());
    }
    EXPECT_EQ(QStringList("Cannot write '" + file + "': Permission denied"), boxes.TakeErrors());
    EXPECT_EQ(before, ReadFile(file));
    EXPECT_TRUE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentTest, LongPathsAreSavedAndOpened)
{
    const QString folder = GetPath(QString(140, 'a') + '/' + QString(140, 'b'));
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = folder + "/" + QString(200, 'c') + ".ZORCont";
    AddBox("Box");
    answers.AnswerFile(file);
    EXPECT_TRUE(GetCommands().SaveAs());
    EXPECT_TRUE(GetCommands().New());
    EXPECT_TRUE(GetCommands().Open(file));
    EXPECT_EQ(1, CountGeometries());
    EXPECT_EQ(QString(200, 'c') + ".ZORCont - Zorvane Host", Title());
}

TEST_F(ZORHostDocumentTest, TheDocumentFollowsTheLifeOfItsContainer)
{
    ZORHostDocument document(nullptr);
    auto container = std::make_unique<ZORFeatContainer>();
    document.SetContainer(container.get());
    document.MarkSaved(GetPath("part.ZORCont"), document.GetNumChanges());
    container->GetFeatureRoot("ZORFeatRoot");
    EXPECT_TRUE(document.IsModified());
    container.reset();
    EXPECT_FALSE(document.IsModified());
    EXPECT_TRUE(document.IsEmpty());
    EXPECT_EQ(nullptr, document.GetContainer());
}

} // namespace
