// Tests of ZORGeoReference.

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

using Reference = ZORGeoReference<const ZORGeoPoint>;

class ZORGeoReferenceTest : public testing::Test
{
protected:
    std::unique_ptr<ZORGeoCartesianPoint> point =
        std::make_unique<ZORGeoCartesianPoint>(nullptr, ZORMathPoint(1, 2, 3));
};

TEST_F(ZORGeoReferenceTest, CountsAsLongAsItLives)
{
    {
        const Reference reference(point.get());
        EXPECT_EQ(1, point->GetReferenceCount());
        EXPECT_EQ(ZORMathPoint(1, 2, 3), reference->GetMathPoint());
        const Reference copy =
            reference; // NOLINT(performance-unnecessary-copy-initialization): what is tested
        EXPECT_EQ(2, point->GetReferenceCount());
        EXPECT_EQ(point.get(), copy.Get());
    }
    EXPECT_EQ(0, point->GetReferenceCount());
}

TEST_F(ZORGeoReferenceTest, MovesWithoutCounting)
{
    Reference first(point.get());
    Reference second(std::move(first));
    EXPECT_EQ(1, point->GetReferenceCount());
    const ZORGeoCartesianPoint other(nullptr, ZORMathPoint());
    Reference third(&other);
    third = std::move(second);
    EXPECT_EQ(0, other.GetReferenceCount());
    EXPECT_EQ(1, point->GetReferenceCount());
    const Reference& same = third;
    third = same;
    EXPECT_EQ(1, point->GetReferenceCount());
    third.Reset();
    third.Reset();
    EXPECT_EQ(0, point->GetReferenceCount());
    EXPECT_FALSE(third);
}

TEST_F(ZORGeoReferenceTest, BecomesNullWithItsGeometry)
{
    Reference reference(point.get());
    const Reference copy = reference;
    point.reset();
    EXPECT_EQ(nullptr, reference.Get());
    EXPECT_FALSE(copy);
    reference = Reference();
}

TEST_F(ZORGeoReferenceTest, NullReferencesNothing)
{
    const Reference null;
    const Reference also(nullptr);
    EXPECT_FALSE(null);
    EXPECT_FALSE(also);
}

} // namespace
