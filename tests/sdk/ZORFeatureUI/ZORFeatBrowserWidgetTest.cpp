#include "BrowserTest.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatGeometry.h>

#include <QContextMenuEvent>
#include <QTest>
#include <QTextDocument>

namespace {

using ZORFeatBrowserWidgetTest = BrowserTest;

TEST_F(ZORFeatBrowserWidgetTest, IsEmptyWithoutEnvironmentAndWithoutGeometries)
{
    ZORFeatBrowserWidget other;
    EXPECT_EQ(other.GetEnvironment(), nullptr);
    EXPECT_EQ(other.findChild<QTreeView*>()->model()->rowCount(), 0);
    EXPECT_EQ(other.GetCurrentGeometry(), nullptr);
    EXPECT_TRUE(other.GetSelectedGeometries().isEmpty());
    EXPECT_FALSE(other.SelectGeometry(nullptr));
    EXPECT_EQ(browser.GetEnvironment(), environment.get());
    EXPECT_ITEMS("");
    EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    EXPECT_FALSE(view->accessibleName().isEmpty());
}

TEST_F(ZORFeatBrowserWidgetTest, ShowsFeatureTreesAboveTheGeometriesByKind)
{
    AddBody();
    AddSurface();
    ZORFeatFolder* const folder = AddFolder(Root());
    AddPoint();
    Register(new ZORFeatGeometry(folder));
    AddPoint();
    AddCurve();
    AddFolder(Root());
    EXPECT_ITEMS("Root.1[Folder.1[Geometry.1] Folder.2] Points (2)[CartesianPoint.1 CartesianPoint.2] "
                 "Curves (1)[Polyline.1] Surfaces (1)[Surface.1] Bodies (1)[Body.1]");

    ZORFeatBrowserWidget late;
    late.SetEnvironment(environment.get());
    EXPECT_EQ(late.findChild<QTreeView*>()->model()->rowCount(), 5) << "what was there before is shown";
}

TEST_F(ZORFeatBrowserWidgetTest, ShowsFeaturesWithoutParentAndUnknownGeometries)
{
    class Odd final : public ZORGeoGeometry
    {
    public:
        explicit Odd(ZORGeoContainer* container)
            : ZORGeoGeometry(container)
        {
        }
    };
    Register(new Odd(Container()))->setObjectName(QStringLiteral("odd"));
    AddPoint();
    Register(new ZORFeatObject(Container()));
    EXPECT_ITEMS("Object.1 Points (1)[CartesianPoint.1] Other geometry (1)[odd]");
}

TEST_F(ZORFeatBrowserWidgetTest, FollowsLabelsAndNames)
{
    ZORFeatFolder* const folder = AddFolder(Root());
    ZORGeoGeometry* const point = AddPoint();
    EXPECT_ITEMS("Root.1[Folder.1] Points (1)[CartesianPoint.1]");
    QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
    folder->SetLabel(QStringLiteral("Skin"));
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex(), IndexOf("Skin"));
    point->setObjectName(QStringLiteral("Origin"));
    EXPECT_EQ(changed.size(), 2);
    EXPECT_ITEMS("Root.1[Skin] Points (1)[Origin]");
    browser.SetEnvironment(nullptr);
    point->setObjectName(QStringLiteral("nobody looks"));
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(ZORFeatBrowserWidgetTest, TellsClassAndReferencesInTheToolTip)
{
    ZORGeoGeometry* const point = AddPoint();
    point->AddReference(nullptr);
    EXPECT_EQ(IndexOf("CartesianPoint.1").data(Qt::ToolTipRole).toString(),
              QStringLiteral("CartesianPoint.1\nClass: ZORGeoCartesianPoint\nReferences: 1"));
    EXPECT_EQ(IndexOf("CartesianPoint.1").data(Qt::UserRole).value<ZORGeoGeometry*>(), point);
}

TEST_F(ZORFeatBrowserWidgetTest, ShowsRootsAndGroupsOpenAndFoldersClosed)
{
    AddFolder(AddFolder(Root()));
    AddPoint();
    EXPECT_TRUE(view->isExpanded(IndexOf("Root.1")));
    EXPECT_TRUE(view->isExpanded(IndexOf("Points (1)")));
    EXPECT_FALSE(view->isExpanded(IndexOf("Folder.1")));
}

TEST_F(ZORFeatBrowserWidgetTest, TellsTheActivatedGeometry)
{
    ZORGeoGeometry* const point = AddPoint();
    const QRect rect = view->visualRect(IndexOf("CartesianPoint.1"));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, rect.center());
    EXPECT_EQ(activated.size(), 0);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, rect.center());
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated[0][0].value<ZORGeoGeometry*>(), point);
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(activated.size(), 2);
    view->setCurrentIndex(IndexOf("Points (1)"));
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(activated.size(), 2) << "a group is no geometry";
}

TEST_F(ZORFeatBrowserWidgetTest, TellsTheSelectionFromTopToBottom)
{
    ZORGeoGeometry* const surface = AddSurface();
    ZORGeoGeometry* const second = (AddPoint(), AddPoint());
    ZORFeatFolder* const folder = AddFolder(Root());
    QItemSelectionModel* const selection = view->selectionModel();
    for (const char* item : {"Surface.1", "Points (2)", "CartesianPoint.2", "Folder.1"})
        selection->select(IndexOf(item), QItemSelectionModel::Select);
    ASSERT_EQ(selected.size(), 4);
    EXPECT_EQ(selected[3][0].value<Geometries>(), Geometries({folder, second, surface}));
    delete second;
    QCoreApplication::processEvents();
    ASSERT_EQ(selected.size(), 5);
    EXPECT_EQ(selected[4][0].value<Geometries>(), Geometries({folder, surface}));
    browser.SetEnvironment(nullptr);
    ASSERT_EQ(selected.size(), 6);
    EXPECT_TRUE(selected[5][0].value<Geometries>().isEmpty());
}

TEST_F(ZORFeatBrowserWidgetTest, SelectsAndShowsAGeometryOnRequest)
{
    for (int i = 0; i < 200; ++i)
        AddPoint();
    ZORFeatFolder* const inner = AddFolder(AddFolder(Root()));
    ASSERT_TRUE(browser.SelectGeometry(inner)) << "though control has not returned to the event loop yet";
    EXPECT_EQ(browser.GetCurrentGeometry(), inner);
    EXPECT_EQ(browser.GetSelectedGeometries(), Geometries({inner}));
    EXPECT_TRUE(view->isExpanded(IndexOf("Folder.1")));
    ASSERT_TRUE(browser.SelectGeometry(Container()->GetGeometryByIndex(180)));
    EXPECT_TRUE(view->viewport()->rect().intersects(view->visualRect(view->currentIndex())));
    EXPECT_EQ(browser.GetSelectedGeometries().size(), 1);

    ZORFeatEnvironment other;
    ZORGeoCartesianPoint foreign(other.GetContainer(), {0, 0, 0});
    EXPECT_FALSE(browser.SelectGeometry(&foreign));
    EXPECT_EQ(browser.GetSelectedGeometries().size(), 1);
    EXPECT_FALSE(browser.SelectGeometry(nullptr));
    EXPECT_TRUE(browser.GetSelectedGeometries().isEmpty());
}

TEST_F(ZORFeatBrowserWidgetTest, AsksForAContextMenu)
{
    QSignalSpy asked(&browser, &ZORFeatBrowserWidget::ContextMenuRequested);
    ZORGeoGeometry* const point = AddPoint();
    const QPoint place = view->visualRect(IndexOf("CartesianPoint.1")).center();
    const QPoint global = view->viewport()->mapToGlobal(place);
    QContextMenuEvent onItem(QContextMenuEvent::Mouse, place, global);
    QCoreApplication::sendEvent(view->viewport(), &onItem);
    QContextMenuEvent below(QContextMenuEvent::Mouse, {5, 150},
                            view->viewport()->mapToGlobal(QPoint(5, 150)));
    QCoreApplication::sendEvent(view->viewport(), &below);
    ASSERT_EQ(asked.size(), 2);
    EXPECT_EQ(asked[0][0].value<ZORGeoGeometry*>(), point);
    EXPECT_EQ(asked[0][1].toPoint(), global);
    EXPECT_EQ(asked[1][0].value<ZORGeoGeometry*>(), nullptr);
}

TEST_F(ZORFeatBrowserWidgetTest, SwitchesBetweenEnvironments)
{
    AddPoint();
    ZORFeatEnvironment other;
    Register(new ZORGeoSurface(other.GetContainer(), {}, {}));
    browser.SetEnvironment(&other);
    EXPECT_ITEMS("Surfaces (1)[Surface.1]");
    AddPoint();
    EXPECT_ITEMS("Surfaces (1)[Surface.1]");
    browser.SetEnvironment(nullptr);
    EXPECT_ITEMS("");
    browser.SetEnvironment(environment.get());
    EXPECT_ITEMS("Points (2)[CartesianPoint.1 CartesianPoint.2]");
    browser.SetEnvironment(environment.get());
    EXPECT_ITEMS("Points (2)[CartesianPoint.1 CartesianPoint.2]");
    browser.SetEnvironment(&other);
    environment.reset();
    EXPECT_ITEMS("Surfaces (1)[Surface.1]");
}

TEST_F(ZORFeatBrowserWidgetTest, IsEmptyOnceItsEnvironmentIsDestroyed)
{
    AddFolder(Root());
    browser.SelectGeometry(AddPoint());
    AddSurface(); // not yet taken over
    environment.reset();
    EXPECT_EQ(browser.GetEnvironment(), nullptr);
    EXPECT_EQ(browser.GetCurrentGeometry(), nullptr);
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_ITEMS("");
}

TEST_F(ZORFeatBrowserWidgetTest, AllowsReceiversOfTheSelectionToChangeTheContainer)
{
    Geometries points;
    for (int i = 0; i < 10; ++i)
        points.append(AddPoint());
    browser.SelectGeometry(points[4]);
    QObject::connect(&browser, &ZORFeatBrowserWidget::SelectionChanged, &browser, [&] {
        delete std::exchange(points[7], nullptr);
        browser.SelectGeometry(points[8]);
        AddSurface();
    });
    delete points[4];
    QCoreApplication::processEvents();
    EXPECT_EQ(model->rowCount(model->index(0, 0)), 8);
    EXPECT_TRUE(Items().contains(QStringLiteral("Surface.1")));
}

TEST_F(ZORFeatBrowserWidgetTest, AllowsReceiversOfTheSelectionToEndTheEnvironment)
{
    ZORGeoGeometry* const point = AddPoint();
    browser.SelectGeometry(point);
    AddFolder(Root());
    AddSurface();
    QCoreApplication::processEvents();
    QObject::connect(&browser, &ZORFeatBrowserWidget::SelectionChanged, &browser,
                     [&] { environment.reset(); });
    delete point;
    AddSurface();
    EXPECT_ITEMS("");
    EXPECT_EQ(browser.GetEnvironment(), nullptr);
}

TEST_F(ZORFeatBrowserWidgetTest, DrawsItsIconsInTheColoursOfItsPalette)
{
    AddFolder(Root());
    AddPoint();
    AddCurve();
    AddSurface();
    AddBody();
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Text, Qt::white);
    const auto darkest = [&](const char* item) {
        const QImage image = IndexOf(item).data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
        int darkestLightness = 255;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                if (color.alpha() > 250)
                    darkestLightness = std::min(darkestLightness, color.lightness());
            }
        }
        return darkestLightness;
    };
    for (const char* item : {"Root.1", "Folder.1", "CartesianPoint.1", "Polyline.1", "Surface.1", "Body.1"}) {
        browser.setPalette(QPalette(Qt::lightGray));
        EXPECT_LT(darkest(item), 100) << item << " on light";
        browser.setPalette(palette);
        const int onDark = darkest(item);
        EXPECT_GT(onDark, 140) << item << " on dark";
        EXPECT_LT(onDark, 255) << item << " is empty";
    }
}

TEST_F(ZORFeatBrowserWidgetTest, ToolTipsShowNamesLiterally)
{
    const QString name = QStringLiteral("%3 <img src=\"/dev/zero\">");
    AddPoint()->setObjectName(name);
    QTextDocument document;
    document.setHtml(IndexOf(name).data(Qt::ToolTipRole).toString());
    EXPECT_TRUE(document.toPlainText().startsWith(name)) << qPrintable(document.toPlainText());
}

} // namespace
