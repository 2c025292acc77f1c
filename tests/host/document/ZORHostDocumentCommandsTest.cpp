// Tests of what happens to a document while its files are read and written.

#include "document/ZORHostDocumentCommands.h"

#include "DocumentTest.h"
#include "support/HostileFiles.h"
#include "support/UncheckedLeaks.h"

#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <new>
#include <utility>

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

TEST_F(ZORHostDocumentCommandsTest, WhatIsOpenedIsSeenAndWhatOthersAddIsNot)
{
    ZORFeatContainer* const container = GetEnvironment()->GetContainer();
    ASSERT_TRUE(GetCommands().Open(WriteTetrahedron("part.stl")));
    ASSERT_TRUE(GetCommands().Import(WriteTetrahedron("other.stl")));
    AddBox("Box");
    ASSERT_EQ(3, container->GetNumGeometry());
    EXPECT_EQ(QString("part"), container->GetGeometryByIndex(0)->objectName());
    EXPECT_TRUE(container->GetStyles()->Get(container->GetGeometryByIndex(0)).IsVisible());
    EXPECT_TRUE(container->GetStyles()->Get(container->GetGeometryByIndex(1)).IsVisible());
    EXPECT_FALSE(container->GetStyles()->Get(container->GetGeometryByIndex(2)).IsVisible());
}

TEST_F(ZORHostDocumentCommandsTest, AFileThatDoesNotFitInLeavesTheDocumentAsItWas)
{
    const UncheckedLeaks unchecked; // it throws through Qt
    AddBox("Box");
    const QString file = SaveAs("box.ZORCont");
    const QString part = WriteTetrahedron("part.stl");
    {
        QObject receiver;
        bool isFirst = true;
        QObject::connect(GetEnvironment()->GetContainer(), &ZORGeoContainer::GeometryAdded, &receiver,
                         [&isFirst] {
                             if (std::exchange(isFirst, false))
                                 throw std::bad_alloc();
                         });
        EXPECT_FALSE(GetCommands().Open(part));
    }
    EXPECT_EQ(QStringList("Not enough memory to read '" + part + "'"), boxes.TakeErrors());
    ASSERT_EQ(1, CountGeometries());
    EXPECT_EQ(QString("Box"), GetEnvironment()->GetContainer()->GetGeometryByIndex(0)->objectName());
    EXPECT_EQ(file, GetDocument().GetFile());
    EXPECT_FALSE(GetDocument().IsModified());
    const QByteArray before = ReadFile(file);
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_EQ(before, ReadFile(file));
}

TEST_F(ZORHostDocumentCommandsTest, FilesThatWouldHaveToBeWaitedForAreRefused)
{
    const QStringList paths = HostileFiles::MakeIrregular(QFileInfo(GetPath("a")).absolutePath());
    for (const QString& path : paths) {
        EXPECT_FALSE(GetCommands().Open(path));
        EXPECT_EQ(QStringList("Cannot open file '" + path + "': it is not a regular file"),
                  boxes.TakeErrors());
    }
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

TEST_F(ZORHostDocumentCommandsTest, WhoCancelsAFileGetsNoneOfThoseBehindIt)
{
    const QString part = WriteTetrahedron("part.stl");
    QTimer::singleShot(0, &window, [this] { GetCommands().CancelReading(); });
    EXPECT_FALSE(GetCommands().Add({part, part, part}));
    EXPECT_EQ(0, CountGeometries());
    EXPECT_FALSE(GetDocument().IsModified());
    EXPECT_TRUE(GetCommands().Add({part, part, part}));
    EXPECT_EQ(3, CountGeometries());
}

TEST_F(ZORHostDocumentCommandsTest, ClosingTheWindowGivesUpReading)
{
    QTimer::singleShot(0, &window, [this] { EXPECT_TRUE(window.close()); });
    GetCommands().Open(WriteTetrahedron("part.stl"));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(0, CountGeometries());
}

} // namespace
