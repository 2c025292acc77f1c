#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisRepSet.h>

#include <gtest/gtest.h>

namespace {

const ZORVisPrimitive* PointsAt(const ZORMathPoint& point)
{
    return new ZORVisPointPrimitive(ZORMathSetOfPoints{point});
}

ZORMathBoundingBox BoxOf(const ZORMathPoint& a, const ZORMathPoint& b)
{
    ZORMathBoundingBox box;
    box.Add(a);
    box.Add(b);
    return box;
}

} // namespace

TEST(ZORVisRepGraphicsTest, KeepsPrimitivesAndOptions)
{
    const QList<const ZORVisPrimitive*> primitives = {PointsAt({1, 2, 3}), PointsAt({-4, 5, 6})};
    ZORVisOptions options;
    options.SetLineThickness(3);
    const ZORVisRepGraphics rep(primitives, options);
    EXPECT_EQ(rep.GetPrimitives(), primitives);
    EXPECT_EQ(rep.GetOptions(), options);
    EXPECT_EQ(rep.GetBoundingBox(), BoxOf({1, 2, 3}, {-4, 5, 6}));
}

TEST(ZORVisRepGraphicsTest, IgnoresNullAndDeletesWhatIsListedTwiceOnce)
{
    const ZORVisPrimitive* primitive = PointsAt({1, 2, 3});
    const ZORVisRepGraphics rep({nullptr, primitive, primitive}, ZORVisOptions());
    EXPECT_EQ(rep.GetPrimitives().size(), 2);
}

TEST(ZORVisRepGraphicsTest, WithoutPrimitivesItIsEmpty)
{
    const ZORVisRepGraphics rep({}, ZORVisOptions());
    EXPECT_TRUE(rep.GetBoundingBox().IsEmpty());
}

TEST(ZORVisRepSetTest, SurvivesTheRepsItWasMadeFrom)
{
    auto first = std::make_unique<ZORVisRepGraphics>(QList<const ZORVisPrimitive*>{PointsAt({1, 0, 0})},
                                                     ZORVisOptions());
    auto second = std::make_unique<ZORVisRepGraphics>(QList<const ZORVisPrimitive*>{PointsAt({0, 2, 0})},
                                                      ZORVisOptions());
    const ZORVisRepSet set({first.get(), nullptr, second.get()});
    first.reset();
    second.reset();
    EXPECT_EQ(set.GetItems().size(), 2U);
    EXPECT_EQ(set.GetBoundingBox(), BoxOf({1, 0, 0}, {0, 2, 0}));
}

TEST(ZORVisRepSetTest, MayHoldSetsAndNothing)
{
    ZORVisRepSet empty({});
    EXPECT_TRUE(empty.GetBoundingBox().IsEmpty());
    ZORVisRepGraphics graphics({PointsAt({1, 0, 0})}, ZORVisOptions());
    ZORVisRepSet inner({&graphics, &graphics});
    const ZORVisRepSet outer({&inner, &empty});
    EXPECT_EQ(outer.GetItems().size(), 2U);
}
