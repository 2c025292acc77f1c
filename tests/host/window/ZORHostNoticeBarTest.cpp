// Tests of what the notice bar says about files that were not read completely.

#include "window/ZORHostNoticeBar.h"

#include "HostTest.h"
#include "docks/ZORHostLineQueue.h"
#include "plugins/ZORHostPluginManager.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFileNotices.h>

#include <QDialog>
#include <QFile>
#include <QPlainTextEdit>
#include <QPushButton>

#include <thread>

namespace {

class ZORHostNoticeBarTest : public HostTest
{
protected:
    ZORHostNoticeBarTest() { window.show(); }

    QString WriteCut(const QString& name) const
    {
        return WriteFile(
            name, "solid a\nfacet\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendfacet\nfacet\nvertex 1");
    }
    QString TextOfDetails()
    {
        window.findChild<QPushButton*>("_NoticeLossesBtn")->click();
        auto* const dialog = window.findChild<QDialog*>("_LossesDialog");
        if (!dialog)
            return {};
        const QString text = dialog->findChild<QPlainTextEdit*>("_LossesEdit")->toPlainText();
        dialog->close();
        DeleteDeferred();
        return text;
    }

    ZORHostPluginManager plugins;
    ZORHostLineQueue log{100};
    ZORHostMainWindow window{&plugins, &log};
    ZORHostNoticeBar* notices = window.GetNoticeBar();
};

TEST_F(ZORHostNoticeBarTest, WhatWasLeftOutOfAFileIsOneClickAway)
{
    EXPECT_FALSE(notices->isVisible());
    EXPECT_TRUE(window.OpenFile(WriteCut("a%1<b>.stl")));
    EXPECT_TRUE(WaitFor([&] { return notices->isVisible(); }));
    EXPECT_EQ(QStringList("'a%1<b>.stl' was not read completely."), notices->GetMessages());
    const QString text = TextOfDetails();
    EXPECT_TRUE(text.contains(GetPath("a%1<b>.stl"))) << text.toStdString();
    EXPECT_TRUE(text.contains("1 of 2 facets used; left out: 1")) << text.toStdString();
    EXPECT_EQ(1, text.count("facets used")) << "the loader and the host do not both report it";
}

TEST_F(ZORHostNoticeBarTest, FilesThatOthersReadCountToo)
{
    QFile file(WriteCut("cut.stl"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ZORGeoStlLoader(&file).Load(GetEnvironment()->GetContainer(), ZORSysValue::Millimeter);
    EXPECT_EQ(QStringList("'cut.stl' was not read completely."), notices->GetMessages());
    std::thread([] {
        ZORSysFileNotices::GetInstance()->Report("x/drawing.dxf", {"skipped: HATCH (2 times)"});
    }).join();
    EXPECT_TRUE(
        WaitFor([&] { return notices->GetMessages() == QStringList("2 files were not read completely."); }));
    EXPECT_TRUE(TextOfDetails().contains("skipped: HATCH (2 times)"));
    notices->Dismiss();
    EXPECT_FALSE(notices->isVisible());
    EXPECT_TRUE(notices->GetMessages().isEmpty());
    ZORSysFileNotices::GetInstance()->Report("nothing", {});
    EXPECT_FALSE(notices->isVisible());
}

TEST_F(ZORHostNoticeBarTest, ACompleteFileSaysNothing)
{
    EXPECT_TRUE(window.OpenFile(WriteTetrahedron("t.stl")));
    QCoreApplication::processEvents();
    EXPECT_FALSE(notices->isVisible());
}

} // namespace
