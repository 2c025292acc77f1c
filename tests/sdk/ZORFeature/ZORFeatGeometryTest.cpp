#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORTopology/ZORTopBody.h>

#include <QVariant>

#include <gtest/gtest.h>

namespace {

/// A feature with a body, as the modules above make them.
class ShapedFeature final : public ZORFeatGeometry
{
public:
    ShapedFeature(ZORFeatObject* parent, ZORTopBody* body)
        : ZORFeatGeometry(parent)
        , m_body(body)
    {
    }
    ZORTopBody* GetBody() const override { return m_body; }

private:
    ZORTopBody* m_body; // not owned
};

TEST(ZORFeatGeometryTest, HasNoBodyUnlessADerivedClassGivesOne)
{
    ZORFeatContainer container;
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
    auto* const plain = new ZORFeatGeometry(root);
    plain->Initialize();
    EXPECT_EQ(plain->GetBody(), nullptr);

    auto* const body = new ZORTopBody(&container, nullptr);
    body->Initialize();
    const ZORFeatGeometry* const shaped = new ShapedFeature(root, body);
    EXPECT_EQ(shaped->GetBody(), body);
    delete shaped;
}

TEST(ZORFeatGeometryTest, ItsShapeIsWhatItsBodyIsMadeOf)
{
    ZORFeatContainer container;
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
    auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    point->Initialize();
    auto* const body = new ZORTopBody(&container, point);
    body->Initialize();
    const ShapedFeature shaped(root, body);
    EXPECT_EQ(point, ZORFeatShapeOf(&shaped));
    EXPECT_EQ(point, ZORFeatShapeOf<ZORGeoPoint>(&shaped));
    EXPECT_EQ(nullptr, ZORFeatShapeOf<ZORTopBody>(&shaped));
    EXPECT_EQ(point, ZORFeatShapeOf(point)) << "a geometry is its own shape";
    EXPECT_EQ(nullptr, ZORFeatShapeOf(root)) << "a feature without a body has none";
    EXPECT_EQ(nullptr, ZORFeatShapeOf(nullptr));
    const ShapedFeature empty(root, nullptr);
    EXPECT_EQ(nullptr, ZORFeatShapeOf(&empty));
}

TEST(ZORFeatGeometryTest, IsOnTheOneChainOfClassesThatViewsAndSelectorsWalk)
{
    const QMetaObject* type = &ZORFeatGeometry::staticMetaObject;
    for (const char* className : {"ZORFeatGeometry", "ZORFeatObject", "ZORGeoGeometry", "QObject"}) {
        ASSERT_TRUE(type);
        EXPECT_STREQ(type->className(), className);
        type = type->superClass();
    }
    EXPECT_EQ(type, nullptr);

    ZORFeatContainer container;
    ZORGeoGeometry* const root = container.GetFeatureRoot("ZORFeatRoot");
    EXPECT_EQ(QVariant::fromValue(root).value<ZORFeatObject*>(), root);
}

TEST(ZORFeatGeometryTest, OwnsItsBodyButNotWhatTheBodyIsMadeOf)
{
    ZORFeatContainer container;
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
    ZORGeoCartesianPoint point(&container, {1, 2, 3});
    ZORTopBody body(&container, &point);
    EXPECT_EQ(QList<ZORGeoGeometry*>{&body}, ShapedFeature(root, &body).GetOwnedGeometry());
    EXPECT_TRUE(ShapedFeature(root, nullptr).GetOwnedGeometry().isEmpty());
}

} // namespace
