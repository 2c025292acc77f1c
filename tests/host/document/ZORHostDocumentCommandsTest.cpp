// Tests of what happens to a document while its files are read and written.

#include "document/ZORHostDocumentCommands.h"

#include "DocumentTest.h"

#include <ZORGeometry/ZORGeoSurface.h>

namespace {

using ZORHostDocumentCommandsTest = DocumentTest;

TEST_F(ZORHostDocumentCommandsTest, ChangesWhileTheFileIsWrittenAreNotInTheFile)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    AddBox("Other box");
    QTimer::singleShot(0, &window, [this] { AddBox("Late box"); }); // when the thread has started
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_EQ(3, CountGeometries());
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_EQ(file, GetDocument().GetFile());
}

TEST_F(ZORHostDocumentCommandsTest, ADocumentThatChangesWhileAFileIsReadIsNotReplaced)
{
    const QString part = WriteTetrahedron("part.stl");
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    QTimer::singleShot(0, &window, [this] { AddBox("Late box"); });
    EXPECT_FALSE(GetCommands().Open(part));
    EXPECT_EQ(
        QStringList("'" + part
                    + "' was not opened, because the document has changed while the file was being read"),
        boxes.TakeErrors());
    EXPECT_EQ(2, CountGeometries());
    EXPECT_EQ(file, GetDocument().GetFile());
    EXPECT_TRUE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentCommandsTest, WhileAFileIsReadNothingElseHappensToTheDocument)
{
    const QString part = WriteTetrahedron("part.stl");
    bool isTried = false;
    QTimer::singleShot(0, &window, [&] {
        isTried = true;
        EXPECT_TRUE(GetCommands().IsBusy());
        EXPECT_FALSE(window.findChild<QAction*>("_OpenAction")->isEnabled());
        EXPECT_FALSE(GetCommands().New());
        EXPECT_FALSE(GetCommands().Open(part));
        EXPECT_FALSE(GetCommands().Import(part));
        EXPECT_FALSE(GetCommands().Save());
        EXPECT_FALSE(GetCommands().Add({part}));
    });
    EXPECT_TRUE(GetCommands().Open(part));
    EXPECT_TRUE(isTried);
    EXPECT_FALSE(GetCommands().IsBusy());
    EXPECT_TRUE(window.findChild<QAction*>("_OpenAction")->isEnabled());
    EXPECT_EQ(1, CountGeometries());
}

TEST_F(ZORHostDocumentCommandsTest, ClosingTheWindowWaitsForTheFileThatIsBeingWritten)
{
    AddBox("Box");
    SaveAs("part.ZORCont");
    AddBox("Other box");
    QTimer::singleShot(0, &window, [this] {
        EXPECT_TRUE(GetCommands().IsWriting());
        EXPECT_FALSE(window.close());
    });
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_TRUE(WaitFor([this] { return !window.isVisible(); }));
    EXPECT_FALSE(GetDocument().IsModified());
}

TEST_F(ZORHostDocumentCommandsTest, ClosingTheWindowGivesUpReading)
{
    QTimer::singleShot(0, &window, [this] { EXPECT_TRUE(window.close()); });
    GetCommands().Open(WriteTetrahedron("part.stl"));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(0, CountGeometries());
}

} // namespace
