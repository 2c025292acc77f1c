#include "view/ZORHostPresentation.h"

#include "HostTest.h"
#include "base/ZORHostPreferences.h"
#include "view/ZORHostView3D.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatPresentation.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORVisualization/ZORVisScene.h>

#include <QFile>

namespace {

class ZORHostPresentationTest : public HostTest
{
protected:
    ZORHostPresentationTest() { presentation.SetEnvironment(GetEnvironment()); }
    ~ZORHostPresentationTest() override { ZORHostPreferences::Get()->SetShowsEverythingNew(false); }

    ZORFeatContainer* GetContainer() const { return GetEnvironment()->GetContainer(); }
    void AddPointAndCurve()
    {
        (new ZORGeoCartesianPoint(GetContainer(), {1, 2, 3}))->Initialize();
        (new ZORGeoPolyline(GetContainer(), {{0, 0, 0}, {10, 0, 0}}, true))->Initialize();
    }
    bool AreShown(int count)
    {
        return WaitFor([this] { return presentation.GetPresentation()->IsUpToDate(); })
               && view.GetScene()->GetNumDrawings() == count;
    }

    ZORHostView3D view;
    ZORHostPresentation presentation{&view, nullptr};
};

TEST_F(ZORHostPresentationTest, AContainerOpenedAgainShowsItsCurvesAndPoints)
{
    GetContainer()->GetStyles()->SetNewVisible(true);
    AddPointAndCurve();
    QFile file(GetPath("document.ZORCont"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    GetContainer()->Save(file);
    file.close();
    GetContainer()->Clear();
    GetContainer()->GetStyles()->SetNewVisible(false);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const ZORFeatShowNew show(GetContainer()); // as whatever opens files does
    GetContainer()->Load(file);
    EXPECT_TRUE(AreShown(2));
    EXPECT_EQ(0, GetEnvironment()->GetNumVirtualObjects());
}

TEST_F(ZORHostPresentationTest, WhatPlugInsCreateIsHiddenUnlessPreferredOtherwise)
{
    AddPointAndCurve();
    EXPECT_TRUE(AreShown(0));
    ZORHostPreferences::Get()->SetShowsEverythingNew(true);
    AddPointAndCurve();
    EXPECT_TRUE(AreShown(2)) << "what was hidden stays so";
    ZORHostPreferences::Get()->SetShowsEverythingNew(false);
    {
        const ZORFeatShowNew show(GetContainer());
        AddPointAndCurve();
    }
    EXPECT_TRUE(AreShown(4));
    QList<ZORGeoGeometry*> all;
    for (int i = 0; i < GetContainer()->GetNumGeometry(); ++i)
        all.append(GetContainer()->GetGeometryByIndex(i));
    GetContainer()->GetStyles()->SetVisible(all, true);
    EXPECT_TRUE(AreShown(6));
}

TEST_F(ZORHostPresentationTest, LivesWithoutADocument)
{
    presentation.SetEnvironment(nullptr);
    EXPECT_EQ(nullptr, presentation.GetPresentation());
    EXPECT_EQ(nullptr, presentation.GetDrawn(nullptr));
    EXPECT_EQ(nullptr, view.GetScene());
    presentation.SetEnvironment(GetEnvironment());
    EXPECT_TRUE(AreShown(0));
}

} // namespace
