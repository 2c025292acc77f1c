// The SDK's own commands in the host: menus, frames, the page of plug-ins.

#include "actions/ZORHostCommandPalette.h"
#include "actions/ZORHostIcons.h"
#include "plugins/StandardCommandsInHost.h"
#include "plugins/ZORHostPluginDialog.h"
#include "plugins/ZORHostPluginManager.h"
#include "window/ZORHostDialogFrame.h"
#include "window/ZORHostMainWindow.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatObject.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTreeWidget>

namespace {

using ZORHostStandardCommandsTest = StandardCommandsInHost;

TEST_F(ZORHostStandardCommandsTest, AnOpenPaletteListsThemAgainAfterTheyWereLoadedAnew)
{
    window.show();
    ZORHostCommandPalette palette(&window);
    palette.setAttribute(Qt::WA_DeleteOnClose, false);
    palette.show();
    const auto* const list = palette.findChild<QTreeWidget*>("_PaletteList");
    const auto isListed = [list] { return !list->findItems("Create Layup", Qt::MatchExactly).isEmpty(); };
    EXPECT_TRUE(isListed());
    EXPECT_TRUE(plugins.Unload(library));
    EXPECT_FALSE(isListed());
    EXPECT_TRUE(plugins.Load(library));
    EXPECT_TRUE(WaitFor(isListed));
}

TEST_F(ZORHostStandardCommandsTest, PathsOfPluginsKeepTheirWidthWhenTheListChanges)
{
    ZORHostPluginDialog page(&plugins, nullptr);
    page.resize(1600, 400);
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
    const auto* const table = page.findChild<QTableWidget*>("_PluginTable");
    const auto fills = [table] { return table->horizontalHeader()->length() == table->viewport()->width(); };
    EXPECT_TRUE(WaitFor(fills));
    EXPECT_TRUE(plugins.Unload(library));
    EXPECT_TRUE(fills());
    EXPECT_TRUE(plugins.Load(library));
    EXPECT_TRUE(fills());
    page.resize(500, 400);
    EXPECT_TRUE(
        WaitFor([table] { return table->horizontalHeader()->length() > table->viewport()->width(); }));
}

TEST_F(ZORHostStandardCommandsTest, MenusNameThemWhileTheyAreLoaded)
{
    EXPECT_EQ(QStringList({"Create Layup", "Material Library", "Create Rosette", "Create Draping Strategy"}),
              GetEntries("_CompositesMenu"));
    EXPECT_EQ(QStringList({"Create Projection", "Create Points", "Create Line", "Create Polyline"}),
              GetEntries("_WireframeMenu"));
    EXPECT_EQ(QStringList{"Create Course"}, GetEntries("_ToolPathMenu"));
    ZORHostPluginDialog page(&plugins, nullptr);
    const auto* table = page.findChild<QTableWidget*>("_PluginTable");
    ASSERT_EQ(1, table->rowCount());
    EXPECT_EQ(QString("ZORStandardCommands"), table->item(0, 0)->text());
    EXPECT_EQ(QString("Loaded"), table->item(0, 2)->text());
    EXPECT_TRUE(plugins.Unload(library));
    DeleteDeferred();
    for (const char* menu : {"_CompositesMenu", "_WireframeMenu", "_ToolPathMenu"})
        EXPECT_EQ(nullptr, window.findChild<QMenu*>(QLatin1String(menu))) << menu;
    EXPECT_TRUE(plugins.Load(library));
}

TEST_F(ZORHostStandardCommandsTest, HaveIconsOfTheirOwn)
{
    const QImage general = ZORHostIcon("no such icon").pixmap(24).toImage();
    QList<QImage> images{general};
    for (const char* category : {"Composites", "Wireframe", "Tool Path"}) {
        for (const QAction* action : ZORCmdController::GetController()->GetActions(QLatin1String(category))) {
            const QImage image = action->icon().pixmap(24).toImage();
            EXPECT_FALSE(image.isNull());
            EXPECT_FALSE(images.contains(image)) << action->text().toStdString();
            images.append(image);
        }
    }
    EXPECT_EQ(10, images.size());
}

TEST_F(ZORHostStandardCommandsTest, CopiesOfTheirIconsStayWholeAfterUnloading)
{
    const QSize size(48, 48);
    const QIcon icon = ZORCmdController::GetController()->GetAction("ZORCompRosetteCmd.Create")->icon();
    EXPECT_TRUE(plugins.Unload(library));
    EXPECT_EQ(size, icon.pixmap(size).size());
    EXPECT_NE(ZORHostIcon("no such icon").pixmap(size).toImage(), icon.pixmap(size).toImage());
    EXPECT_EQ(QSize(16, 16), icon.pixmap(16).size());
    EXPECT_TRUE(plugins.Load(library));
}

TEST_F(ZORHostStandardCommandsTest, FrameShowsWhatIsWrongAndCreatesTheObject)
{
    QPointer<ZORHostDialogFrame> frame = Open("ZORWFProjectionCmd.Create");
    ASSERT_TRUE(frame);
    EXPECT_EQ(QString("Create Projection"), frame->windowTitle());
    EXPECT_EQ(QString("Choose a point or a curve to project."),
              frame->findChild<QLabel*>("_ProblemLbl")->text());
    EXPECT_FALSE(
        frame->findChild<QDialogButtonBox*>("_ButtonBox")->button(QDialogButtonBox::Ok)->isEnabled());
    Press(frame, QDialogButtonBox::Cancel);
    EXPECT_FALSE(frame);

    frame = Open("ZORCompRosetteCmd.Create");
    ASSERT_TRUE(frame);
    frame->findChild<QLineEdit*>("_LabelEdit")->setText("Axes of the skin");
    Press(frame, QDialogButtonBox::Ok);
    EXPECT_FALSE(frame);
    const ZORFeatContainer* container = GetEnvironment()->GetContainer();
    bool isThere = false;
    for (int i = 0; i < container->GetNumGeometry(); ++i)
        isThere |= container->GetGeometryByIndex(i)->inherits("ZORCompRosette");
    EXPECT_TRUE(isThere);
}

TEST_F(ZORHostStandardCommandsTest, ACanceledCommandLeavesTheDocumentUnchanged)
{
    AddBox("Box");
    const QSignalSpy changes(GetEnvironment()->GetContainer(), &ZORGeoContainer::ContentChanged);
    for (const char* id :
         {"ZORCompLayupCmd.Create", "ZORCompMaterialLibraryCmd.Edit", "ZORCompRosetteCmd.Create",
          "ZORCompStrategyCmd.Create", "ZORWFProjectionCmd.Create", "ZORTPCourseCmd.Create"}) {
        const QWidget* frame = Open(id);
        ASSERT_NE(nullptr, frame) << id;
        Press(frame, QDialogButtonBox::Cancel);
        EXPECT_TRUE(changes.isEmpty()) << id;
    }
}

TEST_F(ZORHostStandardCommandsTest, FailureOfACommitIsShownAndTheFrameStays)
{
    AddBox("Box");
    const QPointer<ZORHostDialogFrame> frame = Open("ZORCompRosetteCmd.Create");
    ASSERT_TRUE(frame);
    auto* surface = frame->findChild<QComboBox*>("_SurfaceCombo");
    surface->setCurrentIndex(surface->findText("Box"));
    frame->findChild<QDoubleSpinBox*>("_OriginZSpin")->setValue(500);
    frame->findChild<QDoubleSpinBox*>("_XAxisXSpin")->setValue(0);
    frame->findChild<QDoubleSpinBox*>("_XAxisZSpin")->setValue(1);
    Press(frame, QDialogButtonBox::Ok);
    EXPECT_EQ(QStringList("the X axis of the rosette is perpendicular to the surface"), boxes.TakeErrors());
    ASSERT_TRUE(frame);
    EXPECT_TRUE(frame->isVisible());
    Press(frame, QDialogButtonBox::Cancel);
}

TEST_F(ZORHostStandardCommandsTest, ObjectsStayUsableWhenTheCommandsAreUnloaded)
{
    Press(Open("ZORCompRosetteCmd.Create"), QDialogButtonBox::Ok);
    Press(Open("ZORCompLayupCmd.Create"), QDialogButtonBox::Ok);
    Press(Open("ZORCompStrategyCmd.Create"), QDialogButtonBox::Ok);
    ZORFeatContainer* container = GetEnvironment()->GetContainer();
    const int numGeometry = container->GetNumGeometry();
    EXPECT_TRUE(plugins.Unload(library));
    for (int i = 0; i < numGeometry; ++i) {
        if (auto* feature = qobject_cast<ZORFeatObject*>(container->GetGeometryByIndex(i)))
            feature->SetLabel(QString::number(i));
    }
    QCoreApplication::processEvents();
    container->Clear();
    EXPECT_EQ(0, container->GetNumGeometry());
    EXPECT_TRUE(plugins.Load(library));
}

TEST_F(ZORHostStandardCommandsTest, UnloadingClosesTheirFrames)
{
    const QPointer<ZORHostDialogFrame> first = Open("ZORCompLayupCmd.Create");
    const QPointer<ZORHostDialogFrame> second = Open("ZORCompMaterialLibraryCmd.Edit");
    EXPECT_TRUE(plugins.Unload(library)) << plugins.GetPlugins().constFirst().reason.toStdString();
    DeleteDeferred();
    EXPECT_FALSE(first);
    EXPECT_FALSE(second);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(plugins.Load(library));
}

} // namespace
