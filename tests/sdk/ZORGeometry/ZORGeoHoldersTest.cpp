#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoHolders.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <gtest/gtest.h>

namespace {

using Geometries = QList<ZORGeoGeometry*>;

class ZORGeoHoldersTest : public testing::Test
{
protected:
    ZORGeoGeometry* AddPoint()
    {
        auto* const point = new ZORGeoCartesianPoint(&container, {0, 0, 0});
        point->Initialize();
        return point;
    }

    ZORGeoContainer container;
    ZORGeoGeometry* const used = AddPoint();
    ZORGeoGeometry* const first = AddPoint();
    ZORGeoGeometry* const second = AddPoint();
};

TEST_F(ZORGeoHoldersTest, FindsEveryHolderOnceInTheOrderOfRegistration)
{
    EXPECT_TRUE(ZORGeoHolders(container).GetHolders(*used).isEmpty());
    const ZORGeoReference<ZORGeoGeometry> a(used, second);
    const ZORGeoReference<ZORGeoGeometry> b(used, first);
    const ZORGeoReference<ZORGeoGeometry> c(used, second);
    const ZORGeoHolders holders(container);
    EXPECT_EQ(holders.GetHolders(*used), Geometries({first, second}));
    EXPECT_EQ(holders.GetNumOtherReferences(*used), 0);
    EXPECT_TRUE(holders.GetHolders(*first).isEmpty());
}

TEST_F(ZORGeoHoldersTest, ForgetsHoldersThatReleaseTheirReferences)
{
    ZORGeoReference<ZORGeoGeometry> a(used, first);
    ZORGeoReference<ZORGeoGeometry> copy = a;
    a.Reset();
    EXPECT_EQ(ZORGeoHolders(container).GetHolders(*used), Geometries{first});
    copy = ZORGeoReference<ZORGeoGeometry>(used, second);
    EXPECT_EQ(ZORGeoHolders(container).GetHolders(*used), Geometries{second});
    copy.Reset();
    EXPECT_TRUE(ZORGeoHolders(container).GetHolders(*used).isEmpty());
}

TEST_F(ZORGeoHoldersTest, CountsReferencesOfWhatIsNotInTheContainer)
{
    const QObject dialog;
    const ZORGeoReference<ZORGeoGeometry> a(used, &dialog);
    const ZORGeoReference<ZORGeoGeometry> b(used);
    const ZORGeoReference<ZORGeoGeometry> c(used, first);
    const ZORGeoHolders holders(container);
    EXPECT_EQ(holders.GetHolders(*used), Geometries{first});
    EXPECT_EQ(holders.GetNumOtherReferences(*used), 2);
}

TEST_F(ZORGeoHoldersTest, SurvivesUsersThatAreGoneAndReferencesGivenBackForOthers)
{
    used->AddReference(second);
    used->AddReference(first);
    delete second;
    EXPECT_EQ(ZORGeoHolders(container).GetHolders(*used), Geometries{first});
    EXPECT_EQ(ZORGeoHolders(container).GetNumOtherReferences(*used), 1);
    used->RemoveReference(nullptr);
    used->RemoveReference(nullptr);
    EXPECT_EQ(used->GetReferenceCount(), 0);
    EXPECT_TRUE(ZORGeoHolders(container).GetHolders(*used).isEmpty());
}

} // namespace
