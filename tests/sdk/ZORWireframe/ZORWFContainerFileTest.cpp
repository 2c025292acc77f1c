#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORWireframe/ZORWFRawPoint.h>

#include <QBuffer>

#include <gtest/gtest.h>

namespace {

QByteArray Save(const ZORGeoContainer& container)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    container.Save(buffer);
    return buffer.data();
}

void Load(ZORGeoContainer& container, const QByteArray& file)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    container.Load(buffer);
}

TEST(ZORWFContainerFileTest, ARawPointKeepsItsBodyAndTakesItAwayWithIt)
{
    ZORFeatContainer container;
    auto* const feature = new ZORWFRawPoint(container.GetFeatureRoot("ZORFeatRoot"), {1, 2, 3});
    feature->SetLabel("seed");
    feature->Initialize();
    const QByteArray file = Save(container);
    ZORFeatContainer loaded;
    Load(loaded, file);
    EXPECT_EQ(file, Save(loaded));
    ASSERT_EQ(4, loaded.GetNumGeometry());
    auto* const copy = qobject_cast<ZORWFRawPoint*>(loaded.GetGeometryByIndex(3));
    ASSERT_TRUE(copy);
    EXPECT_EQ(QString("seed"), copy->GetLabel());
    ASSERT_TRUE(copy->GetBody());
    EXPECT_EQ(1, copy->GetBody()->GetReferenceCount());
    const auto* point = qobject_cast<const ZORGeoPoint*>(copy->GetBody()->GetGeometry());
    ASSERT_TRUE(point);
    EXPECT_EQ(ZORMathPoint(1, 2, 3), point->GetMathPoint());
    copy->Remove();
    EXPECT_EQ(1, loaded.GetNumGeometry());
}

TEST(ZORWFContainerFileTest, ARawPointWithoutItsBodyIsSavedWithoutIt)
{
    ZORFeatContainer container;
    auto* const feature = new ZORWFRawPoint(container.GetFeatureRoot("ZORFeatRoot"), {1, 2, 3});
    feature->Initialize();
    delete feature->GetBody();
    const QByteArray file = Save(container);
    ZORFeatContainer loaded;
    Load(loaded, file);
    EXPECT_EQ(file, Save(loaded));
}

} // namespace
