// Tests of the list of recent files.

#include "document/ZORHostRecentFiles.h"

#include "DocumentTest.h"

#include <QMenu>

namespace {

using ZORHostRecentFilesTest = DocumentTest;

TEST_F(ZORHostRecentFilesTest, RecentFilesAreOpenedFromTheMenuAndMissingOnesLeaveIt)
{
    AddBox("Box");
    const QString first = SaveAs("first & 100%1.ZORCont");
    const QString second = WriteTetrahedron("second.stl");
    EXPECT_TRUE(GetCommands().Open(second));
    EXPECT_EQ(QStringList({second, first}), ZORHostRecentFiles::GetFiles());
    auto* menu = window.findChild<QMenu*>("_RecentMenu");
    emit menu->aboutToShow();
    EXPECT_EQ(QString("&2 first && 100%1.ZORCont"), menu->findChild<QAction*>("_Recent_2")->text());
    menu->findChild<QAction*>("_Recent_2")->trigger();
    EXPECT_EQ(first, GetDocument().GetFile());
    EXPECT_EQ(QStringList({first, second}), ZORHostRecentFiles::GetFiles());
    ASSERT_TRUE(QFile::remove(second));
    emit menu->aboutToShow();
    menu->findChild<QAction*>("_Recent_2")->trigger();
    EXPECT_EQ(QStringList("The file '" + second
                          + "' does not exist anymore. It was removed from the list of recent files."),
              boxes.TakeErrors());
    EXPECT_EQ(QStringList(first), ZORHostRecentFiles::GetFiles());
    EXPECT_EQ(first, GetDocument().GetFile()) << "the document is still there";
    emit menu->aboutToShow();
    menu->findChild<QAction*>("_ClearRecentAction")->trigger();
    EXPECT_TRUE(ZORHostRecentFiles::GetFiles().isEmpty());
}

TEST_F(ZORHostRecentFilesTest, TheListOfRecentFilesStaysShortAndHoldsEachFileOnce)
{
    for (int i = 0; i < 15; ++i)
        ZORHostRecentFiles::Add(QStringLiteral("/folder/%1.ZORCont").arg(i % 12));
    const QStringList files = ZORHostRecentFiles::GetFiles();
    EXPECT_EQ(ZORHostRecentFiles::kMost, files.size());
    EXPECT_EQ(QString("/folder/2.ZORCont"), files.constFirst());
    GetSettings()->setValue("Host/RecentFiles", QStringList({"", "relative", "/a", "/a"}));
    EXPECT_EQ(QStringList("/a"), ZORHostRecentFiles::GetFiles());
    GetSettings()->setValue("Host/RecentFiles", 5);
    EXPECT_TRUE(ZORHostRecentFiles::GetFiles().isEmpty());
}

} // namespace
