#include "OperationTest.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

namespace {

class ZORTestTopProjectDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestTopProjectDlg")); }
    ZORTopBody* AddBody(const QString& name, const ZORGeoGeometry* geometry)
    {
        auto* body = new ZORTopBody(GetContainer(), geometry);
        body->setObjectName(name);
        body->Initialize();
        TakeNew();
        return body;
    }
    void AddPointBody() { AddBody("Point", AddPoint("P", {2, 3, 4})); }
    void AddCurveBody() { AddBody("Curve", AddPolyline("C", {{1, 1, 3}, {4, 5, 3}})); }
    void AddSurfaceBody() { AddBody("Surface", AddSquare("S")); }
    /// Lets both selectors of the open dialog offer bodies of every dimension.
    void OfferAllBodies()
    {
        for (const char* name : {"_ProjectedSel", "_SupportSel"}) {
            auto* selector = Field<ZORTestGeometrySelector>(name);
            selector->setProperty("bodyDim", QString());
            QMetaObject::invokeMethod(selector, "OnReload");
        }
    }
};

TEST_F(ZORTestTopProjectDlgTest, FormAsksForTheProjectedBodyAndTheSupport)
{
    AddPointBody();
    AddCurveBody();
    AddSurfaceBody();
    AddBody("Empty", nullptr);
    OpenDialog();
    EXPECT_EQ(QString("Create Topological Projection"), dialog->windowTitle());
    EXPECT_EQ(QString("Create Topological Curve"), GetClassInfo("label")) << "established";
    EXPECT_EQ(QString(), GetClassInfo("createdTypes"));
    EXPECT_EQ(QString(), GetClassInfo("bodyDim"));
    EXPECT_EQ(QStringList({"Projected: ", "Support: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORTopBody", "ZORTopBody"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"Point", "Curve"}), GetCandidates("_ProjectedSel"));
    EXPECT_EQ(QStringList({"Surface"}), GetCandidates("_SupportSel"));
    EXPECT_EQ(QString("0 1"),
              Field<ZORTestGeometrySelector>("_ProjectedSel")->property("bodyDim").toString());
    EXPECT_EQ(QString("2"), Field<ZORTestGeometrySelector>("_SupportSel")->property("bodyDim").toString());
}

TEST_F(ZORTestTopProjectDlgTest, OkProjectsACurveOnASurface)
{
    AddCurveBody();
    AddSurfaceBody();
    OpenDialog();
    EXPECT_EQ(QStringList({"ZORTopFactory::ZORTopFactory(<>)", "ZORTopFactory::Project(<Surface>, <Curve>)"}),
              TraceOk())
        << "the support comes first";
    const QList<ZORGeoGeometry*> added = TakeNew();
    ASSERT_EQ(2, added.size());
    const auto* curve = qobject_cast<ZORGeoCurveOnSurface*>(added[0]);
    const auto* body = qobject_cast<ZORTopBody*>(added[1]);
    ASSERT_TRUE(curve && body);
    EXPECT_NEAR(5, curve->GetLength(), 1e-9);
    EXPECT_EQ(1, body->GetDimension());
    EXPECT_EQ(curve, body->GetGeometry());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestTopProjectDlgTest, OkProjectsAPointOnASurface)
{
    AddPointBody();
    AddSurfaceBody();
    OpenDialog();
    PressOk();
    const QList<ZORGeoGeometry*> added = TakeNew();
    ASSERT_EQ(2, added.size());
    const auto* point = qobject_cast<ZORGeoPointOnSurface*>(added[0]);
    ASSERT_NE(nullptr, point);
    EXPECT_TRUE(IsNear({2, 3, 0}, point->GetMathPoint()));
    EXPECT_EQ(0, qobject_cast<ZORTopBody*>(added[1])->GetDimension());
}

TEST_F(ZORTestTopProjectDlgTest, OnlyTheFirstInvalidSelectionIsReported)
{
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({"Selection of projected geometry was invalid"}), boxes.TakeErrors());
    AddSurfaceBody();
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Selection of projected geometry was invalid"}), boxes.TakeErrors());
    AddCurveBody();
    OpenDialog();
    Field<ZORTestGeometrySelector>("_SupportSel")->setProperty("bodyDim", QString("7"));
    QMetaObject::invokeMethod(Field<ZORTestGeometrySelector>("_SupportSel"), "OnReload");
    ExpectRefused("Selection of support geometry was invalid", SdkCalls::None);
}

TEST_F(ZORTestTopProjectDlgTest, DimensionOfTheProjectedBodyMustBeTheSmallerOne)
{
    AddPointBody();
    AddCurveBody();
    AddSurfaceBody();
    const struct
    {
        QString projected;
        QString support;
    } refused[] = {{"Curve", "Curve"},   {"Point", "Point"}, {"Surface", "Surface"},
                   {"Surface", "Curve"}, {"Curve", "Point"}, {"Surface", "Point"}};
    for (const auto& [projected, support] : refused) {
        SCOPED_TRACE((projected + " on " + support).toStdString());
        OpenDialog();
        OfferAllBodies();
        Select("_ProjectedSel", projected);
        Select("_SupportSel", support);
        EXPECT_EQ(QStringList(), TraceOk());
        EXPECT_EQ(QStringList({"Cannot project greater or equal dimension geometry"}), boxes.TakeErrors());
        EXPECT_TRUE(TakeNew().isEmpty());
    }
}

TEST_F(ZORTestTopProjectDlgTest, ProjectionThatTheSdkCannotDoShowsNoMessage)
{
    AddPointBody();
    AddCurveBody();
    OpenDialog();
    OfferAllBodies();
    Select("_ProjectedSel", "Point");
    Select("_SupportSel", "Curve");
    PressOk();
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestTopProjectDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_ProjectAction", "ZORTestTopProjectDlg");
}

} // namespace
