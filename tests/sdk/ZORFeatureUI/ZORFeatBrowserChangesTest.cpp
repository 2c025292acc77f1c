// What the browser shows while geometries come and go.

#include "BrowserTest.h"
#include "support/Printers.h"

#include <QRandomGenerator>
#include <QScrollBar>

namespace {

using ZORFeatBrowserChangesTest = BrowserTest;

TEST_F(ZORFeatBrowserChangesTest, TakesOverAdditionsAndRemovals)
{
    ZORGeoGeometry* const point = AddPoint();
    EXPECT_ITEMS("Points (1)[CartesianPoint.1]");
    ZORGeoGeometry* const surface = AddSurface();
    AddPoint();
    EXPECT_ITEMS("Points (2)[CartesianPoint.1 CartesianPoint.2] Surfaces (1)[Surface.1]");
    AddCurve();
    ZORFeatFolder* const folder = AddFolder(Root());
    AddFolder(folder);
    EXPECT_ITEMS("Root.1[Folder.1[Folder.2]] Points (2)[CartesianPoint.1 CartesianPoint.2] "
                 "Curves (1)[Polyline.1] Surfaces (1)[Surface.1]");
    delete surface;
    point->RemoveNoReferences();
    EXPECT_ITEMS("Root.1[Folder.1[Folder.2]] Points (1)[CartesianPoint.2] Curves (1)[Polyline.1]");
    folder->Remove();
    EXPECT_ITEMS("Root.1 Points (1)[CartesianPoint.2] Curves (1)[Polyline.1]");
    Container()->Clear();
    EXPECT_ITEMS("");
    AddPoint();
    EXPECT_ITEMS("Points (1)[CartesianPoint.3]");
}

TEST_F(ZORFeatBrowserChangesTest, NeverShowsWhatComesAndGoesWithinOneTurn)
{
    QSignalSpy inserted(model, &QAbstractItemModel::rowsInserted);
    delete AddPoint();
    ZORFeatFolder* const folder = AddFolder(Root());
    AddFolder(AddFolder(folder))->Remove();
    folder->Remove();
    EXPECT_ITEMS("Root.1");
    ZORFeatFolder* const late = AddFolder(Root());
    AddFolder(late)->Remove();
    delete AddFolder(Root());
    EXPECT_ITEMS("Root.1[Folder.4]");
}

TEST_F(ZORFeatBrowserChangesTest, HasNoDataForAGeometryFromTheMomentItIsGone)
{
    ZORGeoGeometry* const point = AddPoint();
    AddPoint();
    ASSERT_TRUE(browser.SelectGeometry(point));
    const QPersistentModelIndex index = IndexOf("CartesianPoint.1");
    delete point;
    EXPECT_FALSE(index.data().isValid());
    EXPECT_FALSE(index.data(Qt::ToolTipRole).isValid());
    EXPECT_EQ(browser.GetCurrentGeometry(), nullptr);
    EXPECT_TRUE(browser.GetSelectedGeometries().isEmpty());
    EXPECT_FALSE(browser.SelectGeometry(point)) << "the address is not touched";
    EXPECT_FALSE(index.isValid());
}

TEST_F(ZORFeatBrowserChangesTest, KeepsExpansionSelectionAndCurrentItemThroughChanges)
{
    ZORFeatFolder* const open = AddFolder(Root());
    AddFolder(open);
    Geometries points;
    for (int i = 0; i < 100; ++i)
        points.append(AddPoint());
    AddSurface();
    view->setExpanded(IndexOf("Folder.1"), true);
    view->setExpanded(IndexOf("Surfaces (1)"), false);
    QItemSelectionModel* const selection = view->selectionModel();
    selection->select(IndexOf("CartesianPoint.20"), QItemSelectionModel::Select);
    selection->setCurrentIndex(IndexOf("CartesianPoint.60"), QItemSelectionModel::Select);
    const auto expectKept = [&](const char* surfaces) {
        EXPECT_EQ(browser.GetSelectedGeometries(), Geometries({points[19], points[59]}));
        EXPECT_EQ(browser.GetCurrentGeometry(), points[59]);
        EXPECT_TRUE(view->isExpanded(IndexOf("Folder.1")));
        EXPECT_FALSE(view->isExpanded(IndexOf(surfaces)));
    };
    expectKept("Surfaces (1)");
    AddFolder(open);
    AddSurface();
    AddPoint();
    delete points[0];
    delete points[30];
    QCoreApplication::processEvents();
    expectKept("Surfaces (2)");
    for (int i = 1; i < 100; i += 4) { // many separate rows
        if (i != 59 && i != 19)
            delete points[i];
    }
    QCoreApplication::processEvents();
    expectKept("Surfaces (2)");
    EXPECT_EQ(model->rowCount(IndexOf("Points (74)")), 74);
}

TEST_F(ZORFeatBrowserChangesTest, KeepsTheVisibleItemsInPlaceWhenOthersComeAndGoAboveThem)
{
    ZORFeatFolder* const first = AddFolder(Root());
    for (int i = 0; i < 200; ++i)
        AddPoint();
    const QPersistentModelIndex item = IndexOf("CartesianPoint.150");
    view->scrollTo(item, QAbstractItemView::PositionAtCenter);
    const auto place = [&] { return view->visualRect(item).top(); };
    const int before = place();
    ASSERT_TRUE(view->viewport()->rect().contains(view->visualRect(item)));
    for (int i = 0; i < 20; ++i)
        AddFolder(Root());
    QCoreApplication::processEvents();
    EXPECT_EQ(place(), before);
    first->Remove();
    delete Container()->GetGeometryByIndex(5);
    QCoreApplication::processEvents();
    EXPECT_EQ(place(), before);
}

TEST_F(ZORFeatBrowserChangesTest, ShowsWhatIsInsertedAtTheStartToWhoeverLooksThere)
{
    for (int i = 0; i < 200; ++i)
        AddPoint();
    QCoreApplication::processEvents();
    ASSERT_EQ(view->verticalScrollBar()->value(), 0);
    AddFolder(Root());
    QCoreApplication::processEvents();
    EXPECT_EQ(view->verticalScrollBar()->value(), 0);
    EXPECT_EQ(view->indexAt({0, 0}).data().toString(), QStringLiteral("Root.1"));
}

TEST_F(ZORFeatBrowserChangesTest, FollowsAnyChanges)
{
    QRandomGenerator random(20240612);
    QList<QPointer<ZORGeoGeometry>> all{Root()};
    for (int turn = 0; turn < 60; ++turn) {
        for (int change = random.bounded(60); change > 0; --change) {
            ZORGeoGeometry* const some = all[random.bounded(int(all.size()))];
            auto* const feature = qobject_cast<ZORFeatObject*>(some);
            switch (random.bounded(10)) {
            case 0:
                all.append(AddPoint());
                break;
            case 1:
                all.append(AddSurface());
                break;
            case 2:
            case 3:
                if (feature)
                    all.append(AddFolder(feature));
                break;
            case 4:
                if (feature && feature != Root())
                    feature->Remove();
                break;
            case 5:
                if (feature)
                    feature->SetLabel(QString::number(change));
                break;
            case 6:
                if (some && some != Root())
                    some->RemoveNoReferences();
                break;
            case 7:
                if (feature != Root() && random.bounded(4) == 0)
                    delete some;
                break;
            default:
                if (!feature)
                    delete some;
                break;
            }
        }
        all.removeAll(nullptr);
        all.prepend(Root());
        ZORFeatBrowserWidget fresh; // knows all from its start
        fresh.SetEnvironment(environment.get());
        const QString followed = ItemsNow();
        const QAbstractItemModel* const expected = fresh.findChild<QTreeView*>()->model();
        ASSERT_EQ(model->rowCount(), expected->rowCount());
        browser.SetEnvironment(nullptr);
        browser.SetEnvironment(environment.get());
        ASSERT_EQ(followed, Items()) << turn;
    }
}

TEST_F(ZORFeatBrowserChangesTest, TakesOverManyGeometriesInAFewSteps)
{
    constexpr int kCount = 100'000;
    tester.reset(); // it would look at every row in every step
    QSignalSpy inserted(model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(model, &QAbstractItemModel::rowsRemoved);
    Geometries points;
    for (int i = 0; i < kCount; ++i)
        points.append(AddPoint());
    QCoreApplication::processEvents();
    EXPECT_EQ(inserted.size(), 1);
    EXPECT_EQ(model->rowCount(model->index(0, 0)), kCount);
    for (int i = 0; i < kCount; i += 2)
        delete points[i];
    QCoreApplication::processEvents();
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(model->rowCount(model->index(0, 0)), kCount / 2);
    EXPECT_EQ(model->index(7, 0, model->index(0, 0)).data().toString(), QStringLiteral("CartesianPoint.16"));
}

TEST_F(ZORFeatBrowserChangesTest, TakesOverDeepTreesAndFoldsThemUp)
{
    tester.reset(); // it would look at every item in every step
    ZORFeatObject* parent = Root();
    for (int i = 0; i < 100'000; ++i)
        parent = AddFolder(parent);
    ASSERT_TRUE(browser.SelectGeometry(parent));
    view->expandAll();
    EXPECT_EQ(browser.GetCurrentGeometry(), parent);
    int depth = 0;
    for (QModelIndex index = view->currentIndex(); index.isValid(); index = index.parent())
        ++depth;
    EXPECT_EQ(depth, 200);
    EXPECT_EQ(model->rowCount(view->currentIndex().parent()), 100'002 - 200);
    Root()->Remove();
    EXPECT_ITEMS("");
}

} // namespace
