// What applications switch on in the browser.

#include "BrowserTest.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatStyles.h>

#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

namespace {

using Option = ZORFeatBrowserWidget::Option;

/// A feature that owns the body it is given.
class Owner final : public ZORFeatGeometry
{
public:
    using ZORFeatGeometry::ZORFeatGeometry;
    ZORTopBody* GetBody() const override { return m_body; }
    void SetBody(ZORTopBody* body)
    {
        m_body = body;
        emit BodyChanged();
    }

private:
    QPointer<ZORTopBody> m_body; // not owned
};

class ZORFeatBrowserOptionsTest : public BrowserTest
{
public:
    ZORFeatBrowserOptionsTest()
    {
        host.SetOptions(Option::EyeColumn | Option::SearchField | Option::OwnedGeometry | Option::Renaming
                        | Option::NarrowNames | Option::Hovering);
        host.resize(300, 400);
        host.SetEnvironment(environment.get());
        host.show();
        hostTester = std::make_unique<QAbstractItemModelTester>(Model(), kTested);
    }
    QTreeView* Tree() const { return host.findChild<QTreeView*>(); }
    QAbstractItemModel* Model() const { return Tree()->model(); }
    QString Shown(const QModelIndex& parent = {}) const
    {
        QStringList items;
        for (int row = 0; row < Model()->rowCount(parent); ++row) {
            const QModelIndex index = Model()->index(row, 0, parent);
            const QString below = Tree()->isExpanded(index) ? Shown(index) : QString();
            items += index.data().toString() + (below.isEmpty() ? below : u'[' + below + u']');
        }
        return items.join(u' ');
    }
    QString ShownNow() const
    {
        QCoreApplication::processEvents();
        return Shown();
    }
    QModelIndex At(const QString& text) const
    {
        QCoreApplication::processEvents();
        return Model()
            ->match(Model()->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    /// What the eye of an item says.
    QString EyeOf(const QString& text) const
    {
        const QModelIndex index = At(text);
        return index.siblingAtColumn(1).data(Qt::AccessibleTextRole).toString();
    }
    void ClickEye(const QString& text) const
    {
        const QModelIndex index = At(text).siblingAtColumn(1);
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, Tree()->visualRect(index).center());
    }
    void Search(const QString& text) const
    {
        host.GetSearchField()->setFocus();
        QTest::keyClicks(host.GetSearchField(), text);
    }
    QLineEdit* Rename(ZORGeoGeometry* geometry)
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the editor before
        if (!host.RenameGeometry(geometry))
            return nullptr;
        return Tree()->findChild<QLineEdit*>("_NameEdit");
    }

    ZORFeatBrowserWidget host;
    std::unique_ptr<QAbstractItemModelTester> hostTester;
    QSignalSpy hostSelected{&host, &ZORFeatBrowserWidget::SelectionChanged};
};

TEST_F(ZORFeatBrowserOptionsTest, ShowsWhatBelongsToAFeatureBelowIt)
{
    auto* const body = static_cast<ZORTopBody*>(AddBody());
    AddBody();
    auto* const owner = new Owner(Root());
    owner->SetBody(body);
    Register(owner);
    Tree()->expandAll();
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Geometry.1] Bodies (1)[Body.2]"));
    Tree()->expandAll();
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Geometry.1[Body.1]] Bodies (1)[Body.2]"));
    EXPECT_ITEMS("Root.1[Geometry.1] Bodies (2)[Body.1 Body.2]"); // the plain browser

    auto* const next = static_cast<ZORTopBody*>(AddBody());
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Geometry.1[Body.1]] Bodies (2)[Body.2 Body.3]"));
    owner->SetBody(next);
    delete body;
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Geometry.1[Body.3]] Bodies (1)[Body.2]"));
    next->setObjectName(QStringLiteral("net"));
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Geometry.1[net]] Bodies (1)[Body.2]"));
    owner->Remove();
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1 Bodies (1)[Body.2]"))
        << "a body that outlives its owner is not listed";
}

TEST_F(ZORFeatBrowserOptionsTest, SearchesWhileTheUserTypesAndKeepsAncestors)
{
    ZORFeatFolder* const folder = AddFolder(Root());
    AddFolder(folder)->SetLabel(QStringLiteral("Skin & <b>bones</b>"));
    AddPoint();
    AddCurve();
    QCoreApplication::processEvents();
    const QString before = Shown();
    Search(QStringLiteral("BONES</"));
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Folder.1[Skin & <b>bones</b>]]"));
    AddFolder(Root())->SetLabel(QStringLiteral("no match"));
    AddFolder(folder)->SetLabel(QStringLiteral("more bones</b>"));
    EXPECT_EQ(ShownNow(), QStringLiteral("Root.1[Folder.1[Skin & <b>bones</b> more bones</b>]]"));
    QTest::keyClick(host.GetSearchField(), Qt::Key_Escape);
    EXPECT_TRUE(host.GetSearchField()->text().isEmpty());
    EXPECT_FALSE(Tree()->isExpanded(At("Folder.1"))) << "as before the search";
    EXPECT_EQ(
        ShownNow(),
        QStringLiteral("Root.1[Folder.1 no match] Points (1)[CartesianPoint.1] Curves (1)[Polyline.1]"));
    Search(QStringLiteral("%1"));
    EXPECT_EQ(ShownNow(), QString());
    Search(QStringLiteral("Points ("));
    EXPECT_EQ(ShownNow(), QString()) << "groups are not objects";
}

TEST_F(ZORFeatBrowserOptionsTest, TheKeyboardGoesFromTheSearchToTheFirstMatchAndBack)
{
    ZORGeoGeometry* const curve = AddCurve();
    AddPoint();
    QCoreApplication::processEvents();
    Search(QStringLiteral("poly"));
    QTest::keyClick(host.GetSearchField(), Qt::Key_Down);
    EXPECT_EQ(host.GetCurrentGeometry(), curve);
    EXPECT_EQ(host.GetSelectedGeometries(), Geometries{curve});
    QTest::keyClick(host.GetSearchField(), Qt::Key_Escape);
    EXPECT_EQ(host.GetSelectedGeometries(), Geometries{curve});
}

TEST_F(ZORFeatBrowserOptionsTest, ReportsNoSelectionWhileItSearches)
{
    ZORGeoGeometry* const curve = AddCurve();
    ZORGeoGeometry* const point = AddPoint();
    host.SelectGeometries({curve, point});
    EXPECT_EQ(host.GetSelectedGeometries(), Geometries({point, curve}));
    hostSelected.clear();
    QSignalSpy searched(&host, &ZORFeatBrowserWidget::SearchChanged);
    Search(QStringLiteral("c"));
    Search(QStringLiteral("art"));
    EXPECT_EQ(host.GetSelectedGeometries(), Geometries{point});
    EXPECT_EQ(searched.size(), 4);
    EXPECT_EQ(hostSelected.size(), 0);
    host.GetSearchField()->clear();
    host.SelectGeometries({curve, point});
    EXPECT_EQ(host.GetSelectedGeometries(), Geometries({point, curve}));
}

TEST_F(ZORFeatBrowserOptionsTest, SelectsManyAtOnceAndReportsThemOnce)
{
    Geometries points;
    for (int i = 0; i < 5000; ++i)
        points.append(AddPoint());
    host.SelectGeometries(points);
    EXPECT_EQ(hostSelected.size(), 1);
    EXPECT_EQ(host.GetSelectedGeometries(), points);
    host.SelectGeometries(points);
    EXPECT_EQ(hostSelected.size(), 1);
    host.SelectGeometries({points[4000], points[10], points[11]});
    EXPECT_EQ(host.GetSelectedGeometries(), Geometries({points[10], points[11], points[4000]}));
    host.SelectGeometries({});
    EXPECT_TRUE(host.GetSelectedGeometries().isEmpty());
    EXPECT_EQ(hostSelected.size(), 3);
}

TEST_F(ZORFeatBrowserOptionsTest, RenamesInPlaceByTheRulesOfNames)
{
    ZORGeoGeometry* const point = AddPoint();
    AddPoint()->setObjectName(QStringLiteral("taken"));
    ZORFeatFolder* const folder = AddFolder(Root());
    const auto enter = [this](ZORGeoGeometry* geometry, const QString& text) {
        QLineEdit* const editor = Rename(geometry);
        ASSERT_TRUE(editor);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    enter(point, QStringLiteral("  100 % <b>&%1  "));
    EXPECT_EQ(point->objectName(), QStringLiteral("100 % <b>&%1"));
    enter(point, QStringLiteral("taken"));
    EXPECT_EQ(point->objectName(), QStringLiteral("taken.2"));
    enter(point, QStringLiteral("   "));
    EXPECT_EQ(point->objectName(), QStringLiteral("taken.2"));
    enter(folder, QStringLiteral("Skin"));
    EXPECT_EQ(folder->GetLabel(), QStringLiteral("Skin"));
    enter(folder, QString());
    EXPECT_EQ(folder->GetLabel(), QStringLiteral("Folder.1"));
    enter(folder, QString(200'000, u'x'));
    EXPECT_EQ(folder->GetLabel().size(), 200'000);
    QLineEdit* const editor = Rename(point);
    ASSERT_TRUE(editor);
    editor->setText(QStringLiteral("dropped"));
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(point->objectName(), QStringLiteral("taken.2"));
    EXPECT_FALSE(browser.RenameGeometry(point)) << "not switched on";
    EXPECT_FALSE(host.RenameGeometry(nullptr));
}

TEST_F(ZORFeatBrowserOptionsTest, RemovingTheObjectEndsItsRenaming)
{
    ZORGeoGeometry* const point = AddPoint();
    AddPoint();
    QPointer<QLineEdit> editor = Rename(point);
    ASSERT_TRUE(editor);
    editor->setText(QStringLiteral("late"));
    delete point;
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(ShownNow(), QStringLiteral("Points (1)[CartesianPoint.2]"));
}

TEST_F(ZORFeatBrowserOptionsTest, ElidesLongNamesAndShortensThemInToolTips)
{
    const QString name = QString(160'000, u'm') + u'\n';
    ZORGeoGeometry* const point = AddPoint();
    point->setObjectName(name);
    QCoreApplication::processEvents();
    const QModelIndex index = Model()->index(0, 0, Model()->index(0, 0));
    EXPECT_LT(index.data().toString().size(), 500);
    EXPECT_LT(index.data(Qt::ToolTipRole).toString().size(), 1000);
    EXPECT_EQ(index.data(Qt::EditRole).toString(), name);
    EXPECT_EQ(Tree()->horizontalScrollBar()->maximum(), 0);
    EXPECT_LE(Tree()->columnWidth(0), Tree()->viewport()->width());
    EXPECT_EQ(IndexOf(name).data().toString(), name) << "the plain browser shows all of it";
}

TEST_F(ZORFeatBrowserOptionsTest, ReportsTheItemUnderThePointer)
{
    ZORGeoGeometry* const point = AddPoint();
    QSignalSpy hovered(&host, &ZORFeatBrowserWidget::GeometryHovered);
    const auto move = [this](const QPoint& position) {
        QMouseEvent event(QEvent::MouseMove, position, Tree()->viewport()->mapToGlobal(position),
                          Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree()->viewport(), &event);
    };
    const QPoint place = Tree()->visualRect(At("CartesianPoint.1")).center();
    move(place);
    move(place + QPoint(1, 0));
    ASSERT_EQ(hovered.size(), 1);
    EXPECT_EQ(hovered[0][0].value<ZORGeoGeometry*>(), point);
    move({5, 390});
    ASSERT_EQ(hovered.size(), 2);
    EXPECT_EQ(hovered[1][0].value<ZORGeoGeometry*>(), nullptr);
    move(place);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(Tree()->viewport(), &leave);
    EXPECT_EQ(hovered.size(), 4);
    EXPECT_TRUE(Tree()->viewport()->hasMouseTracking());
    EXPECT_FALSE(view->viewport()->hasMouseTracking());
}

TEST_F(ZORFeatBrowserOptionsTest, EyesShowAndChangeWhatIsVisible)
{
    ZORGeoGeometry* const point = AddPoint();
    ZORGeoGeometry* const other = AddPoint();
    AddFolder(Root());
    ZORFeatStyles* const styles = Container()->GetStyles();
    EXPECT_EQ(EyeOf("CartesianPoint.1"), QStringLiteral("Visible"));
    EXPECT_EQ(EyeOf("Points (2)"), QStringLiteral("Visible"));
    EXPECT_EQ(EyeOf("Folder.1"), QString()) << "there is nothing to see";
    hostSelected.clear();
    ClickEye("CartesianPoint.1");
    EXPECT_FALSE(styles->Get(point).IsVisible());
    EXPECT_EQ(EyeOf("CartesianPoint.1"), QStringLiteral("Hidden"));
    EXPECT_EQ(EyeOf("Points (2)"), QStringLiteral("Partly visible"));
    ClickEye("Points (2)");
    EXPECT_TRUE(styles->Get(point).IsVisible());
    ClickEye("Points (2)");
    EXPECT_FALSE(styles->Get(point).IsVisible() || styles->Get(other).IsVisible());
    EXPECT_EQ(hostSelected.size(), 0) << "eyes do not select";
    host.SelectGeometries({point, other});
    ClickEye("CartesianPoint.2");
    EXPECT_TRUE(styles->Get(point).IsVisible() && styles->Get(other).IsVisible()) << "all that is selected";
    styles->SetVisible({other}, false);
    EXPECT_EQ(EyeOf("Points (2)"), QStringLiteral("Partly visible"));
    EXPECT_EQ(model->columnCount(), 1) << "the plain browser has no eyes";
}

TEST_F(ZORFeatBrowserOptionsTest, FeaturesSpeakForWhatTheyAreMadeOf)
{
    ZORGeoGeometry* const surface = AddSurface();
    auto* const body = Register(new ZORTopBody(Container(), surface));
    auto* const owner = new Owner(Root());
    owner->SetBody(static_cast<ZORTopBody*>(body));
    Register(owner);
    ShownNow();
    Tree()->expandAll();
    EXPECT_EQ(EyeOf("Body.1"), QString()) << "is seen by the surface, as a part of the feature";
    EXPECT_EQ(EyeOf("Geometry.1"), QStringLiteral("Visible"));
    ClickEye("Geometry.1");
    EXPECT_FALSE(Container()->GetStyles()->Get(surface).IsVisible());
    EXPECT_EQ(EyeOf("Surface.1"), QStringLiteral("Hidden"));
}

TEST_F(ZORFeatBrowserOptionsTest, AFastSecondClickOnAnEyeCountsAsAClick)
{
    ZORGeoGeometry* const point = AddPoint();
    const QModelIndex eye = At("CartesianPoint.1").siblingAtColumn(1);
    QSignalSpy opened(&host, &ZORFeatBrowserWidget::GeometryActivated);
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, {}, Tree()->visualRect(eye).center());
    QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, {}, Tree()->visualRect(eye).center());
    EXPECT_EQ(opened.size(), 0);
    EXPECT_TRUE(Container()->GetStyles()->Get(point).IsVisible()) << "hidden and shown again";
}

TEST_F(ZORFeatBrowserOptionsTest, ManyStylesAreTakenOverInOneStep)
{
    Geometries points;
    for (int i = 0; i < 5000; ++i)
        points.append(AddPoint());
    QCoreApplication::processEvents();
    QSignalSpy changed(Model(), &QAbstractItemModel::dataChanged);
    Container()->GetStyles()->SetVisible(points, false);
    EXPECT_EQ(changed.size(), 0);
    EXPECT_EQ(EyeOf("Points (5000)"), QStringLiteral("Hidden"));
    EXPECT_LE(changed.size(), 2);
}

} // namespace
