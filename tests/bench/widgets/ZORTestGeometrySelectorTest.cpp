#include "widgets/ZORTestGeometrySelector.h"

#include "SelectorProbes.h"
#include "support/BenchTest.h"
#include "support/ItemTexts.h"
#include "support/RemovingGeometry.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>

namespace {

class ZORTestGeometrySelectorTest : public BenchTest
{
protected:
    void Configure(const char* geoType, const char* bodyDim = nullptr, bool multi = false)
    {
        selector.setProperty("geoType", geoType);
        selector.setProperty("label", "Pick: ");
        if (bodyDim)
            selector.setProperty("bodyDim", bodyDim);
        if (multi)
            selector.setProperty("multi", true);
        selector.SetEnvironment(GetEnvironment());
    }

    template<class Widget>
    Widget* Find(const char* objectName)
    {
        return selector.findChild<Widget*>(QLatin1String(objectName));
    }
    QComboBox* Combo() { return Find<QComboBox>("_Combo"); }
    QListWidget* List() { return Find<QListWidget>("_List"); }

    QStringList Entries() { return GetTexts(Combo()); }

    template<class Geometry>
    Geometry* Register(Geometry* geometry, const char* name)
    {
        geometry->setObjectName(QLatin1String(name));
        geometry->Initialize();
        return geometry;
    }
    ZORTopBody* AddBody(const char* name, const ZORGeoGeometry* geometry)
    {
        return Register(new ZORTopBody(GetContainer(), geometry), name);
    }

    ZORTestGeometrySelector selector{nullptr};
};

TEST_F(ZORTestGeometrySelectorTest, SkipsIndicesWhoseGeometryIsGone)
{
    auto* removing = Register(new RemovingGeometry(GetContainer()), "Removing");
    AddPoint("P");
    removing->other = AddPoint("Q");
    Configure("ZORGeoGeometry");
    EXPECT_EQ(nullptr, removing->other.data()) << "the third index has become null";
    EXPECT_EQ(QStringList({"Removing", "P"}), Entries());
}

TEST_F(ZORTestGeometrySelectorTest, FormIsAsDesigned)
{
    EXPECT_EQ(QString("ZORTestGeometrySelector"), selector.objectName());
    EXPECT_EQ(QString("Form"), selector.windowTitle());
    EXPECT_EQ(QSize(529, 377), selector.size());
    EXPECT_NE(nullptr, Find<QHBoxLayout>("horizontalLayout"));
    EXPECT_NE(nullptr, Find<QVBoxLayout>("verticalLayout"));

    const auto* label = Find<QLabel>("_Label");
    EXPECT_EQ(QString("Label: "), label->text());
    EXPECT_EQ(Qt::AlignLeft | Qt::AlignTop, label->alignment());
    EXPECT_EQ(QSizePolicy::Preferred, label->sizePolicy().horizontalPolicy());
    EXPECT_EQ(QSizePolicy::Fixed, label->sizePolicy().verticalPolicy());

    const auto* button = Find<QPushButton>("_Button");
    EXPECT_EQ(QString("..."), button->text());
    EXPECT_EQ(30, button->maximumWidth());
    const auto* column = Find<QVBoxLayout>("verticalLayout");
    EXPECT_EQ(Combo(), column->itemAt(0)->widget());
    EXPECT_EQ(List(), column->itemAt(1)->widget());
}

TEST_F(ZORTestGeometrySelectorTest, SignalAndSlotsAreDeclaredInOrder)
{
    const QMetaObject& metaObject = ZORTestGeometrySelector::staticMetaObject;
    QStringList signatures;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        signatures.append(QLatin1String(metaObject.method(i).methodSignature()));
    EXPECT_EQ(QStringList({"SelectionChanged(const ZORGeoGeometry*)", "OnReload()", "OnBrowseClicked()"}),
              signatures);
}

TEST_F(ZORTestGeometrySelectorTest, EnvironmentBringsTheLabelAndTheFirstReload)
{
    AddPoint("P");
    EXPECT_EQ(0, Combo()->count());
    Configure("ZORGeoPoint");
    EXPECT_EQ(QString("Pick: "), Find<QLabel>("_Label")->text());
    EXPECT_EQ(QStringList({"P"}), Entries());
}

TEST_F(ZORTestGeometrySelectorTest, EmptyContainerGivesNothing)
{
    Configure("ZORGeoPoint");
    EXPECT_EQ(0, Combo()->count());
    EXPECT_EQ(nullptr, selector.GetSelectedGeometry());
    EXPECT_TRUE(selector.GetSelectedGeometries().isEmpty());
}

TEST_F(ZORTestGeometrySelectorTest, EntriesKeepTheOrderOfTheContainerAndCarryTheGeometry)
{
    auto* second = AddPoint("Z");
    auto* first = AddPoint("A");
    Configure("ZORGeoPoint");

    EXPECT_EQ(QStringList({"Z", "A"}), Entries());
    EXPECT_EQ(0, Combo()->currentIndex());
    EXPECT_EQ(second, selector.GetSelectedGeometry());
    const QVariant data = Combo()->itemData(1, Qt::UserRole);
    EXPECT_STREQ("ZORGeoGeometry*", data.typeName());
    EXPECT_EQ(first, data.value<ZORGeoGeometry*>());
    EXPECT_TRUE(Combo()->itemIcon(0).isNull());

    Combo()->setCurrentIndex(1);
    EXPECT_EQ(first, selector.GetSelectedGeometry());
}

TEST_F(ZORTestGeometrySelectorTest, BaseClassListsEverySubclass)
{
    AddPoint("Point");
    AddSurface("Surface");
    AddPolyline("Polyline", {{0, 0, 0}, {1, 0, 0}});
    Register(new ZORGeoLine(GetContainer(), {0, 0, 0}, {0, 1, 0}), "Line");

    Configure("ZORGeoCurve");
    EXPECT_EQ(QStringList({"Polyline", "Line"}), Entries());
}

TEST_F(ZORTestGeometrySelectorTest, ClassNamesAreComparedExactly)
{
    AddPoint("P");
    for (const char* geoType : {"zorgeopoint", "ZORGeoPoin", "ZORGeoPoints", " ZORGeoPoint", ""}) {
        Configure(geoType);
        EXPECT_EQ(QStringList(), Entries()) << geoType;
    }
    Configure("QObject");
    EXPECT_EQ(QStringList({"P"}), Entries()) << "the walk goes up to the last base";
}

TEST_F(ZORTestGeometrySelectorTest, FeaturesShowTheirLabelBehindTheName)
{
    auto* folder = Register(new ZORFeatFolder(Register(new ZORFeatRoot(GetContainer()), "Root")), "Folder");
    folder->SetLabel(QStringLiteral("Ply book"));
    AddPoint("P");

    Configure("ZORFeatFolder");
    EXPECT_TRUE(Entries().contains("Folder (Ply book)")) << Entries().join(u'|').toStdString();
    EXPECT_FALSE(Entries().contains("P"));
}

TEST_F(ZORTestGeometrySelectorTest, DimensionsFilterBodiesAndLeaveOtherGeometriesAlone)
{
    auto* point = AddPoint("Point");
    auto* curve = AddPolyline("Curve", {{0, 0, 0}, {1, 0, 0}});
    auto* surface = AddSurface("Surface");
    AddBody("Body0", point);
    AddBody("Body1", curve);
    AddBody("Body2", surface);

    struct Row
    {
        const char* bodyDim;
        QStringList bodies;
    };
    const QList<Row> table = {
        {"1 2", {"Body1", "Body2"}},
        {"2", {"Body2"}},
        {"", {"Body0", "Body1", "Body2"}},
        {"x", {"Body0"}},           // no number counts as 0
        {"2 ", {"Body0", "Body2"}}, // the empty piece behind the blank too
        {"7", {}},
    };
    for (const Row& row : table) {
        Configure("ZORTopBody", row.bodyDim);
        EXPECT_EQ(row.bodies, Entries()) << row.bodyDim;
        Configure("ZORGeoGeometry", row.bodyDim);
        EXPECT_EQ(QStringList({"Point", "Curve", "Surface"}) + row.bodies, Entries()) << row.bodyDim;
    }
}

TEST_F(ZORTestGeometrySelectorTest, DimensionOfAFeatureIsThatOfItsBody)
{
    auto* root = Register(new ZORFeatRoot(GetContainer()), "Root");
    auto* curveBody = AddBody("Body1", AddPolyline("Curve", {{0, 0, 0}, {1, 0, 0}}));
    auto* surfaceBody = AddBody("Body2", AddSurface("Surface"));
    Register(new ProbeFeature(root, curveBody), "WithCurve")->SetLabel("c");
    Register(new ProbeFeature(root, surfaceBody), "WithSurface")->SetLabel("s");
    Register(new ProbeFeature(root, nullptr), "WithoutBody")->SetLabel("n");

    Configure("ZORFeatGeometry", "1");
    EXPECT_EQ(QStringList({"WithCurve (c)", "WithoutBody (n)"}), Entries());
}

TEST_F(ZORTestGeometrySelectorTest, SingleModeShowsTheComboOnly)
{
    Configure("ZORGeoPoint");
    EXPECT_FALSE(Combo()->isHidden());
    EXPECT_TRUE(List()->isHidden());
    EXPECT_EQ(Combo(), Find<QLabel>("_Label")->buddy());
}

TEST_F(ZORTestGeometrySelectorTest, MultiModeShowsTheListWithoutCandidates)
{
    AddPoint("P");
    Configure("ZORGeoPoint", nullptr, true);
    EXPECT_TRUE(Combo()->isHidden());
    EXPECT_FALSE(List()->isHidden());
    EXPECT_EQ(List(), Find<QLabel>("_Label")->buddy());
    EXPECT_EQ(0, List()->count());
    EXPECT_EQ(0, Combo()->count());
    EXPECT_EQ(nullptr, selector.GetSelectedGeometry());
    EXPECT_TRUE(selector.GetSelectedGeometries().isEmpty());
}

TEST_F(ZORTestGeometrySelectorTest, MultiModeGivesWhatOthersPutIntoTheListAndSelected)
{
    QList<ZORGeoGeometry*> points;
    Configure("ZORGeoPoint", nullptr, true);
    for (const char* name : {"A", "B", "C"}) {
        points.append(AddPoint(QLatin1String(name)));
        auto* item = new QListWidgetItem(QLatin1String(name), List());
        item->setData(Qt::UserRole, QVariant::fromValue(points.last()));
    }
    List()->item(0)->setSelected(true);
    List()->item(2)->setSelected(true);
    EXPECT_EQ(QList<ZORGeoGeometry*>({points[0], points[2]}), selector.GetSelectedGeometries());

    selector.OnReload();
    EXPECT_EQ(3, List()->count()) << "a reload does not clear the list";
    EXPECT_EQ(QList<ZORGeoGeometry*>({points[0], points[2]}), selector.GetSelectedGeometries());
}

TEST_F(ZORTestGeometrySelectorTest, PropertiesAreReadAnewByEveryReload)
{
    AddPoint("P");
    AddSurface("S");
    Configure("ZORGeoPoint");
    selector.setProperty("geoType", "ZORGeoSurface");
    EXPECT_EQ(QStringList({"P"}), Entries());
    selector.OnReload();
    EXPECT_EQ(QStringList({"S"}), Entries());
}

TEST_F(ZORTestGeometrySelectorTest, ReloadMakesTheFirstEntryCurrent)
{
    AddPoint("A");
    AddPoint("B");
    Configure("ZORGeoPoint");
    Combo()->setCurrentIndex(1);
    selector.OnReload();
    EXPECT_EQ(0, Combo()->currentIndex());
    EXPECT_EQ(2, Combo()->count());
}

TEST_F(ZORTestGeometrySelectorTest, DeletedGeometryIsNoChoice)
{
    auto* first = AddPoint("A");
    auto* second = AddPoint("B");
    Configure("ZORGeoPoint");
    first->RemoveNoReferences();
    EXPECT_EQ(nullptr, selector.GetSelectedGeometry());
    Combo()->setCurrentIndex(1);
    EXPECT_EQ(second, selector.GetSelectedGeometry());
    selector.OnReload();
    EXPECT_EQ(QStringList({"B"}), Entries());
}

TEST_F(ZORTestGeometrySelectorTest, SelectionChangedIsNeverEmitted)
{
    AddPoint("A");
    AddPoint("B");
    const QSignalSpy changed(&selector, &ZORTestGeometrySelector::SelectionChanged);
    Configure("ZORGeoPoint");
    Combo()->setCurrentIndex(1);
    selector.OnReload();
    EXPECT_EQ(0, changed.count());
}

TEST_F(ZORTestGeometrySelectorTest, DialogBaseHandsOverTheEnvironment)
{
    AddPoint("P");
    ASSERT_NE(nullptr, Open("ProbeSelectionDlg"));
    auto* inDialog = dialog->findChild<ZORTestGeometrySelector*>("_PointSel");
    ASSERT_NE(nullptr, inDialog);
    EXPECT_EQ(QString("P"), inDialog->findChild<QComboBox*>("_Combo")->currentText());
    EXPECT_EQ(QString("Point: "), inDialog->findChild<QLabel*>("_Label")->text());
    PressCancel();
}

TEST_F(ZORTestGeometrySelectorTest, EveryControlIsNamedForAssistiveTechnology)
{
    Configure("ZORGeoPoint");
    EXPECT_EQ(QString("Create geometry: Pick:"), Find<QPushButton>("_Button")->accessibleName());
    EXPECT_EQ(QString("Pick:"), List()->accessibleName());
}

} // namespace
