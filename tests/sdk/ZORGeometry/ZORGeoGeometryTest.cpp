// Tests of ZORGeoGeometry.

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>
#include <QTest>
#include <QVariant>

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ZORGeoGeometryTest, InitializeRegistersOnce)
{
    ZORGeoContainer container;
    auto* point = new ZORGeoCartesianPoint(&container, ZORMathPoint(1, 2, 3));
    EXPECT_FALSE(point->IsInitialized());
    EXPECT_EQ(0, container.GetNumGeometry());
    point->Initialize();
    point->Initialize();
    EXPECT_TRUE(point->IsInitialized());
    EXPECT_EQ(1, container.GetNumGeometry());
    EXPECT_EQ(&container, point->GetContainer());
    EXPECT_EQ(ZORMathPoint(1, 2, 3), point->GetMathPoint());
}

TEST(ZORGeoGeometryTest, NeedsAContainerToBeInitialized)
{
    ZORGeoCartesianPoint point(nullptr, ZORMathPoint());
    try {
        point.Initialize();
        FAIL();
    } catch (const ZORSysException& exception) {
        EXPECT_EQ(QString("geometry has no container"), exception.GetMessage());
    }
}

TEST(ZORGeoGeometryTest, RemoveNoReferencesSparesWhatIsReferenced)
{
    ZORGeoContainer container;
    auto* point = new ZORGeoCartesianPoint(&container, ZORMathPoint());
    const QPointer<ZORGeoGeometry> guard = point;
    point->Initialize();
    point->AddReference(&container);
    point->AddReference(nullptr);
    EXPECT_EQ(2, point->GetReferenceCount());
    point->RemoveNoReferences();
    point->RemoveReference(&container);
    point->RemoveNoReferences();
    ASSERT_FALSE(guard.isNull());
    EXPECT_EQ(1, container.GetNumGeometry());
    point->RemoveReference(nullptr);
    point->RemoveNoReferences();
    EXPECT_TRUE(guard.isNull());
    EXPECT_EQ(0, container.GetNumGeometry());
}

TEST(ZORGeoGeometryTest, AnUnregisteredGeometryCanBeRemovedToo)
{
    ZORGeoContainer container;
    const QPointer<ZORGeoGeometry> guard = new ZORGeoCartesianPoint(&container, ZORMathPoint());
    guard->RemoveNoReferences();
    EXPECT_TRUE(guard.isNull());
}

TEST(ZORGeoGeometryTest, AReferenceNobodyHeldIsNotTakenBack)
{
    const ZORGeoCartesianPoint point(nullptr, ZORMathPoint());
    QTest::ignoreMessage(QtWarningMsg, "a reference to '' was given back that nobody held");
    point.RemoveReference(nullptr);
    EXPECT_EQ(0, point.GetReferenceCount());
}

TEST(ZORGeoGeometryTest, PointersTravelInVariants)
{
    ZORGeoCartesianPoint point(nullptr, ZORMathPoint());
    const QVariant variant = QVariant::fromValue<ZORGeoGeometry*>(&point);
    EXPECT_STREQ("ZORGeoGeometry*", variant.typeName());
    EXPECT_EQ(&point, variant.value<ZORGeoGeometry*>());
    EXPECT_EQ(&point, variant.value<ZORGeoPoint*>());
}

TEST(ZORGeoGeometryTest, APointMustBeFinite)
{
    EXPECT_THROW(ZORGeoCartesianPoint(nullptr, {0, std::numeric_limits<double>::quiet_NaN(), 0}),
                 ZORSysException);
    EXPECT_THROW(ZORGeoCartesianPoint(nullptr, {std::numeric_limits<double>::infinity(), 0, 0}),
                 ZORSysException);
}

} // namespace
