#include "OperationTest.h"
#include "core/ZORTestCommandRegistry.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWFRawPoint.h>

#include <QLineEdit>

namespace {

class ZORTestCreatePointCmdTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestCreatePointCmd")); }
    void TypeCoordinates(const QString& x, const QString& y, const QString& z)
    {
        TypeInto("_XEdit", x);
        TypeInto("_YEdit", y);
        TypeInto("_ZEdit", z);
    }
    /// Point, body and feature, in this order.
    ZORWFRawPoint* TakeRawPoint()
    {
        const QList<ZORGeoGeometry*> added = TakeNew();
        EXPECT_EQ(3, added.size());
        auto* feature = added.isEmpty() ? nullptr : qobject_cast<ZORWFRawPoint*>(added.constLast());
        EXPECT_NE(nullptr, feature);
        return feature;
    }
    static ZORMathPoint PositionOf(const ZORWFRawPoint* feature)
    {
        return qobject_cast<const ZORGeoPoint*>(feature->GetBody()->GetGeometry())->GetMathPoint();
    }
};

TEST_F(ZORTestCreatePointCmdTest, FormAsksForThreeTextsAndAFolder)
{
    AddPoint("P");
    AddFolder("F");
    OpenDialog();
    ExpectClass("Create Point", {});
    EXPECT_EQ(QStringList({"X: ", "Y: ", "Z: ", "Folder: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORFeatFolder"}), GetGeoTypes());
    EXPECT_EQ(2, GetCandidates("_FolderSel").size()) << "the root is a folder as well";
    for (const char* name : {"_XEdit", "_YEdit", "_ZEdit"})
        EXPECT_EQ(QString(), Field<QLineEdit>(name)->text()) << name;
    for (const char* type : {"ZORGeoPoint", "ZORWFRawPoint", ""}) {
        for (const QMetaObject* creator : ZORTestCommandRegistry::Instance().FindCreators(type))
            EXPECT_STRNE("ZORTestCreatePointCmd", creator->className());
    }
}

TEST_F(ZORTestCreatePointCmdTest, OkAddsARawPointToTheFolder)
{
    const ZORFeatFolder* const folder = AddFolder("F");
    OpenDialog();
    TypeCoordinates("1.5", "-2", "1e3");
    Select("_FolderSel", "F (F)");
    EXPECT_EQ(
        QStringList({"ZORWFRawPoint::ZORWFRawPoint(<F>, (1.5, -2, 1000))", "ZORWFRawPoint::Initialize()"}),
        TraceOk());
    ZORWFRawPoint* const feature = TakeRawPoint();
    EXPECT_EQ(ZORMathPoint(1.5, -2, 1000), PositionOf(feature));
    EXPECT_EQ(folder, feature->GetParentFeature());
    EXPECT_EQ(QString("RawPoint.1"), feature->GetLabel());
}

TEST_F(ZORTestCreatePointCmdTest, TextThatIsNoNumberCountsAsZero)
{
    AddFolder("F");
    OpenDialog();
    TypeCoordinates("abc", "1", "2");
    PressOk();
    EXPECT_EQ(ZORMathPoint(0, 1, 2), PositionOf(TakeRawPoint()));

    OpenDialog(); // nothing typed at all
    PressOk();
    EXPECT_EQ(ZORMathPoint(0, 0, 0), PositionOf(TakeRawPoint()));

    OpenDialog();
    TypeCoordinates("1,5", "1 2", "0x10");
    PressOk();
    EXPECT_EQ(ZORMathPoint(0, 0, 0), PositionOf(TakeRawPoint()));
}

TEST_F(ZORTestCreatePointCmdTest, MissingFolderIsReported)
{
    AddPoint("P");
    TakeNew();
    OpenDialog();
    TypeCoordinates("1", "2", "3");
    ExpectRefused("Selection of parent folder is invalid", SdkCalls::None);
    EXPECT_EQ(QList<bool>({true}), finished) << "OK closes it all the same";
}

TEST_F(ZORTestCreatePointCmdTest, CoordinatesThatAreNotFiniteAreRefusedBySdk)
{
    AddFolder("F");
    OpenDialog();
    TypeCoordinates("nan", "inf", "0");
    ExpectRefused("point is not finite");
}

TEST_F(ZORTestCreatePointCmdTest, SelectorsFindItsFeatureBodyAndPointByTheirOwnKinds)
{
    AddFolder("F");
    OpenDialog();
    TypeCoordinates("1", "2", "3");
    PressOk();

    ZORTestGeometrySelector selector(nullptr);
    selector.SetEnvironment(GetEnvironment());
    const auto find = [&](const char* geoType, const char* bodyDim) {
        selector.setProperty("geoType", geoType);
        selector.setProperty("bodyDim", bodyDim);
        selector.OnReload();
        const ZORGeoGeometry* geometry = selector.GetSelectedGeometry();
        return geometry ? geometry->objectName() : QString();
    };
    EXPECT_EQ(QString("RawPoint.1"), find("ZORFeatGeometry", ""));
    EXPECT_EQ(QString("RawPoint.1"), find("ZORFeatGeometry", "0"));
    EXPECT_EQ(QString("RawPoint.1"), find("ZORWFRawPoint", "2 0"));
    EXPECT_EQ(QString(), find("ZORFeatGeometry", "1 2"));
    EXPECT_EQ(QString("Body.1"), find("ZORTopBody", "0"));
    EXPECT_EQ(QString(), find("ZORTopBody", "1 2"));
    EXPECT_EQ(QString("CartesianPoint.1"), find("ZORGeoPoint", ""));
}

TEST_F(ZORTestCreatePointCmdTest, PointOfTheFeatureIsWhatCanBeVisualized)
{
    ZORTestCommandRegistry& registry = ZORTestCommandRegistry::Instance();
    EXPECT_EQ(nullptr, registry.CreateVisualizer(&ZORWFRawPoint::staticMetaObject))
        << "a feature is no geometry of points, curves or surfaces";
    AddFolder("F");
    OpenDialog();
    PressOk();
    const auto* point = TakeRawPoint()->GetBody()->GetGeometry();
    EXPECT_NE(nullptr, registry.CreateVisualizer(point->metaObject()));
}

TEST_F(ZORTestCreatePointCmdTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("actionCreate_Raw_Point", "ZORTestCreatePointCmd");
}

} // namespace
