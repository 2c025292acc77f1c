#include "objects/ZORHostObjectActions.h"

#include "HostTest.h"
#include "objects/ZORHostObjectTree.h"
#include "support/MessageBoxCatcher.h"
#include "view/ZORHostSelection.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <QColorDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTreeView>
#include <QTreeWidget>

namespace {

using Objects = QList<ZORGeoGeometry*>;

class ZORHostObjectActionsTest : public HostTest
{
protected:
    ZORHostObjectActionsTest()
    {
        m_window.resize(400, 500);
        m_selection.SetContainer(GetContainer());
        m_browser = new ZORFeatBrowserWidget(&m_window);
        m_browser->resize(400, 500);
        m_actions = new ZORHostObjectActions(&m_selection, &m_window);
        new ZORHostObjectTree(m_browser, &m_selection, m_actions);
        m_browser->SetEnvironment(GetEnvironment());
        m_window.show();
        m_point = Register(new ZORGeoCartesianPoint(GetContainer(), {1, 2, 3}));
        m_line = Register(new ZORGeoLine(GetContainer(), {0, 0, 0}, {3, 4, 0}));
        m_folder = new ZORFeatFolder(GetContainer()->GetFeatureRoot("ZORFeatRoot"));
        m_folder->Initialize();
        QCoreApplication::processEvents();
    }

    ZORFeatContainer* GetContainer() const { return GetEnvironment()->GetContainer(); }
    ZORFeatStyles* GetStyles() const { return GetContainer()->GetStyles(); }
    static ZORGeoGeometry* Register(ZORGeoGeometry* geometry)
    {
        geometry->Initialize();
        return geometry;
    }
    QAction* Find(const char* name) const
    {
        QAction* const action = m_window.findChild<QAction*>(QLatin1String(name));
        EXPECT_TRUE(action) << name;
        return action;
    }
    void Trigger(const char* name) const
    {
        QAction* const action = Find(name);
        ASSERT_TRUE(action->isEnabled()) << name;
        action->trigger();
    }
    QTreeView* GetTree() const { return m_browser->findChild<QTreeView*>("_Tree"); }

    /// Gives the tree the focus, once the window that a box has covered is active again.
    void ActivateTree()
    {
        m_window.activateWindow();
        EXPECT_TRUE(WaitFor([this] { return m_window.isActiveWindow(); }));
        GetTree()->setFocus();
    }

    QWidget m_window;
    ZORHostSelection m_selection;
    ZORFeatBrowserWidget* m_browser;
    ZORHostObjectActions* m_actions;
    ZORGeoGeometry* m_point;
    ZORGeoGeometry* m_line;
    ZORFeatFolder* m_folder;
};

TEST_F(ZORHostObjectActionsTest, TreeAndSelectionFollowEachOther)
{
    m_selection.Set({m_line, m_folder});
    EXPECT_EQ(m_browser->GetSelectedGeometries(), Objects({m_folder, m_line}));
    m_browser->SelectGeometry(m_point);
    EXPECT_EQ(m_selection.GetObjects(), Objects{m_point});
    delete m_point;
    EXPECT_TRUE(m_selection.IsEmpty());
    EXPECT_TRUE(WaitFor([this] { return m_browser->GetSelectedGeometries().isEmpty(); }));
}

TEST_F(ZORHostObjectActionsTest, WhatASearchHidesStaysSelected)
{
    m_selection.Set({m_line, m_point});
    m_browser->GetSearchField()->setText("Line");
    EXPECT_EQ(m_browser->GetSelectedGeometries(), Objects{m_line});
    EXPECT_EQ(m_selection.GetCount(), 2);
    m_browser->GetSearchField()->clear();
    EXPECT_EQ(m_browser->GetSelectedGeometries(), Objects({m_point, m_line}));
}

TEST_F(ZORHostObjectActionsTest, NothingIsEnabledWithoutASelection)
{
    for (const char* name :
         {"_EditObjectAction", "_ZoomToAction", "_RenameAction", "_DeleteAction", "_ColorAction",
          "_ShowHideAction", "_IsolateAction", "_ExportObjectsAction", "_PropertiesAction"})
        EXPECT_FALSE(Find(name)->isEnabled()) << name;
    EXPECT_TRUE(Find("_ShowAllAction")->isEnabled());
    m_selection.Set({m_folder});
    EXPECT_FALSE(Find("_ColorAction")->isEnabled()) << "an empty folder has no color";
    EXPECT_TRUE(Find("_RenameAction")->isEnabled());
    m_selection.Set({m_folder, m_line});
    EXPECT_FALSE(Find("_RenameAction")->isEnabled());
    EXPECT_TRUE(Find("_ColorAction")->isEnabled());
}

TEST_F(ZORHostObjectActionsTest, HidesShowsAndIsolates)
{
    const auto visible = [this](const ZORGeoGeometry* object) {
        return GetStyles()->Get(object).IsVisible();
    };
    m_selection.Set({m_line});
    Trigger("_ShowHideAction");
    EXPECT_FALSE(visible(m_line));
    EXPECT_EQ(QString("S&how"), Find("_ShowHideAction")->text());
    Trigger("_ShowHideAction");
    EXPECT_TRUE(visible(m_line));
    Trigger("_IsolateAction");
    EXPECT_TRUE(visible(m_line));
    EXPECT_FALSE(visible(m_point));
    m_selection.Clear();
    Trigger("_ShowAllAction");
    EXPECT_TRUE(visible(m_line) && visible(m_point));
}

TEST_F(ZORHostObjectActionsTest, ChangesStylesOfAllSelectedObjectsAndKeepsTheRestOfThem)
{
    m_selection.Set({m_line, m_point});
    GetStyles()->SetVisible({m_point}, false);
    const ZORFeatStyle before = GetStyles()->Get(m_point);
    Trigger("_Opacity50Action");
    Trigger("_DisplayWireframeAction");
    Trigger("_ColorAction");
    auto* const dialog = m_window.findChild<QColorDialog*>("_ColorDialog");
    ASSERT_TRUE(dialog);
    dialog->setCurrentColor(QColor(1, 2, 3));
    dialog->accept();
    for (const ZORGeoGeometry* object : {m_line, m_point}) {
        const ZORFeatStyle style = GetStyles()->Get(object);
        EXPECT_EQ(0.5, style.GetOpacity());
        EXPECT_EQ(ZORFeatStyle::Display::Wireframe, style.GetDisplay());
        EXPECT_EQ(QColor(1, 2, 3), style.GetColor());
    }
    EXPECT_FALSE(GetStyles()->Get(m_point).IsVisible());
    EXPECT_EQ(before.GetPointSymbol(), GetStyles()->Get(m_point).GetPointSymbol());
    EXPECT_TRUE(Find("_Opacity50Action")->isChecked());
    EXPECT_FALSE(Find("_Opacity100Action")->isChecked());
    Trigger("_UsualStyleAction");
    EXPECT_FALSE(GetStyles()->IsSet(m_line));
}

TEST_F(ZORHostObjectActionsTest, RenamesInTheTreeByKey)
{
    m_selection.Set({m_point});
    ActivateTree();
    QTest::keyClick(GetTree(), Qt::Key_F2);
    auto* const editor = GetTree()->findChild<QLineEdit*>("_NameEdit");
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, "<b>%1&");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(WaitFor([this] { return m_point->objectName() == "<b>%1&"; }));
    m_browser->GetSearchField()->setText("Line");
    m_selection.Set({m_point});
    Trigger("_RenameAction");
    EXPECT_TRUE(m_browser->GetSearchField()->text().isEmpty()) << "the object must be seen";
}

TEST_F(ZORHostObjectActionsTest, DeletesAfterAQuestion)
{
    m_selection.Set({m_point, m_line});
    PressInNextBox(QMessageBox::No);
    Trigger("_DeleteAction");
    EXPECT_EQ(2, m_selection.GetCount());
    QSignalSpy done(m_actions, &ZORHostObjectActions::Done);
    ActivateTree();
    PressInNextBox(QMessageBox::Yes);
    QTest::keyClick(GetTree(), Qt::Key_Delete);
    EXPECT_TRUE(m_selection.IsEmpty());
    ASSERT_EQ(1, done.size());
    EXPECT_EQ(QString("Deleted 2 objects"), done[0][0].toString());
    EXPECT_EQ(2, GetContainer()->GetNumGeometry()) << "the root and its folder";
}

TEST_F(ZORHostObjectActionsTest, DeletesFoldersWithEverythingBelowThem)
{
    auto* const inner = new ZORFeatFolder(m_folder);
    inner->Initialize();
    m_selection.Set({inner, m_folder});
    PressInNextBox(QMessageBox::Yes);
    Trigger("_DeleteAction");
    EXPECT_EQ(3, GetContainer()->GetNumGeometry());
}

TEST_F(ZORHostObjectActionsTest, RefusesToDeleteWhatOthersUse)
{
    m_line->setObjectName("<b>holder</b> %1 " + QString(160'000, u'x'));
    const ZORGeoReference<ZORGeoGeometry> use(m_point, m_line);
    m_selection.Set({m_point});
    auto catcher = std::make_unique<MessageBoxCatcher>();
    Trigger("_DeleteAction");
    const QList<MessageBoxCatcher::Box> boxes = catcher->Take();
    ASSERT_EQ(1, boxes.size());
    EXPECT_TRUE(boxes[0].text.startsWith("'CartesianPoint.1' cannot be deleted"));
    EXPECT_TRUE(boxes[0].text.contains("    <b>holder</b> %1 xxx"));
    EXPECT_LT(boxes[0].text.size(), 500);
    catcher.reset();
    m_selection.Set({m_point, m_line});
    PressInNextBox(QMessageBox::Yes);
    Trigger("_DeleteAction");
    EXPECT_EQ(3, GetContainer()->GetNumGeometry())
        << "the reference is not released by the deletion of its user";
}

TEST_F(ZORHostObjectActionsTest, ARightClickSelectsTheHoveredObjectAndADragDoesNot)
{
    QWidget view(&m_window);
    view.setGeometry(0, 0, 100, 100);
    view.show();
    m_actions->AddContextMenuTo(&view);
    m_selection.Set({m_point});
    m_selection.SetHovered(m_line);
    QTest::mousePress(&view, Qt::RightButton, {}, {10, 10});
    QTest::mouseRelease(&view, Qt::RightButton, {}, {60, 60});
    EXPECT_FALSE(m_actions->GetMenu()->isVisible());
    EXPECT_EQ(m_selection.GetObjects(), Objects{m_point});
    QTest::mousePress(&view, Qt::RightButton, {}, {10, 10});
    QTest::mouseRelease(&view, Qt::RightButton, {}, {11, 10});
    EXPECT_TRUE(m_actions->GetMenu()->isVisible());
    EXPECT_EQ(m_selection.GetObjects(), Objects{m_line});
    m_actions->GetMenu()->close();
}

TEST_F(ZORHostObjectActionsTest, ShowsPropertiesWhichFollowTheObject)
{
    m_actions->Activate(m_line);
    auto* const tree = m_window.findChild<QTreeWidget*>("_PropertiesTree");
    ASSERT_TRUE(tree);
    const auto value = [tree](const QString& name) {
        const auto found = tree->findItems(name, Qt::MatchExactly);
        return found.isEmpty() ? QString() : found.first()->text(1);
    };
    EXPECT_EQ(QString("Line.1"), value("Name"));
    EXPECT_EQ(QString("Line"), value("Type"));
    EXPECT_EQ(QLocale().toString(5.0, 'f', 3) + " mm", value("Length"));
    m_line->setObjectName("<i>renamed</i>");
    EXPECT_TRUE(WaitFor([&] { return value("Name") == "<i>renamed</i>"; }));
    const QPointer<QWidget> dialog = tree->window();
    delete m_line;
    EXPECT_TRUE(WaitFor([&] { return !dialog; }));
}

} // namespace
