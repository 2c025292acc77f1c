// Tests of ZORMathVector.

#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(ZORMathVectorTest, ArithmeticIsComponentwise)
{
    ZORMathVector v(1, -2, 3);
    EXPECT_EQ(ZORMathVector(-1, 2, -3), -v);
    EXPECT_EQ(ZORMathVector(5, 3, 9), v + ZORMathVector(4, 5, 6));
    EXPECT_EQ(ZORMathVector(-3, -7, -3), v - ZORMathVector(4, 5, 6));
    EXPECT_EQ(ZORMathVector(2, -4, 6), 2 * v);
    EXPECT_EQ(ZORMathVector(2, -4, 6), v * 2);
    v += ZORMathVector(1, 1, 1);
    EXPECT_EQ(ZORMathVector(2, -1, 4), v);
    v *= -0.5;
    EXPECT_EQ(ZORMathVector(-1, 0.5, -2), v);
    EXPECT_EQ(ZORMathVector(0, 0, 0), ZORMathVector());
}

TEST(ZORMathVectorTest, ProductsFollowTheRightHand)
{
    const ZORMathVector x(1, 0, 0);
    const ZORMathVector y(0, 1, 0);
    EXPECT_EQ(ZORMathVector(0, 0, 1), Cross(x, y));
    EXPECT_EQ(ZORMathVector(0, 0, -1), Cross(y, x));
    EXPECT_EQ(0, Dot(x, y));
    EXPECT_EQ(32, Dot(ZORMathVector(1, 2, 3), ZORMathVector(4, 5, 6)));
}

TEST(ZORMathVectorTest, CrossProductIsPerpendicularToBoth)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-100, 100);
    for (int i = 0; i < 200; ++i) {
        const ZORMathVector a(coordinate(random), coordinate(random), coordinate(random));
        const ZORMathVector b(coordinate(random), coordinate(random), coordinate(random));
        const ZORMathVector c = Cross(a, b);
        EXPECT_NEAR(0, Dot(a, c), 1e-8);
        EXPECT_NEAR(0, Dot(b, c), 1e-8);
        const double dot = Dot(a, b);
        EXPECT_NEAR(Dot(a, a) * Dot(b, b), Dot(c, c) + dot * dot, 1e-4);
    }
}

TEST(ZORMathVectorTest, LengthIsEuclidean)
{
    EXPECT_EQ(7, ZORMathVector(2, -3, 6).GetLength());
    EXPECT_EQ(0, ZORMathVector().GetLength());
    EXPECT_EQ(1e200, ZORMathVector(1e200, 0, 0).GetLength());
}

// Directions times magnitudes over the whole range of doubles, subnormal ones included.
TEST(ZORMathVectorTest, NormalisedVectorHasLengthOneWhateverItsMagnitude)
{
    for (const double magnitude : {1e-310, 1e-200, 1e-160, 1e-140, 1e-10, 1.0, 1e10, 1e140, 1e160, 1e300}) {
        const ZORMathVector unit = (magnitude * ZORMathVector(2, -3, 6)).GetNormalized();
        const double bound = magnitude < 1e-300 ? 1e-12 : 1e-15;
        EXPECT_NEAR(1, unit.GetLength(), 1e-15) << magnitude;
        EXPECT_NEAR(2.0 / 7, unit.GetX(), bound) << magnitude;
        EXPECT_NEAR(-3.0 / 7, unit.GetY(), bound) << magnitude;
        EXPECT_NEAR(6.0 / 7, unit.GetZ(), bound) << magnitude;
    }
    const double largest = std::numeric_limits<double>::max();
    EXPECT_NEAR(1, ZORMathVector(largest, largest, -largest).GetNormalized().GetLength(), 1e-15);
    const double smallest = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(ZORMathVector(0, -1, 0), ZORMathVector(0, -smallest, 0).GetNormalized());
}

TEST(ZORMathVectorTest, VectorWithoutDirectionNormalisesToZero)
{
    for (const ZORMathVector& v : {ZORMathVector(), ZORMathVector(-0.0, 0, 0), ZORMathVector(kInfinity, 0, 0),
                                   ZORMathVector(1, -kInfinity, 0), ZORMathVector(kNotANumber, 0, 0),
                                   ZORMathVector(1, 2, kNotANumber), ZORMathVector(1e200, kNotANumber, 0)})
        EXPECT_EQ(ZORMathVector(), v.GetNormalized());
}

TEST(ZORMathVectorTest, FiniteMeansEveryComponent)
{
    EXPECT_TRUE(ZORMathVector(1e308, -1e308, 0).IsFinite());
    EXPECT_FALSE(ZORMathVector(0, kNotANumber, 0).IsFinite());
    EXPECT_FALSE(ZORMathVector(0, 0, -kInfinity).IsFinite());
}

TEST(ZORMathVectorTest, TraceShowsTheComponentsInFull)
{
    QByteArray text;
    ZorTraceAppend(text, ZORMathVector(0.1, -kInfinity, kNotANumber));
    EXPECT_EQ("(0.10000000000000001, -inf, nan)", text.toStdString());
}

TEST(ZORMathVectorTest, LengthNeitherOverflowsNorUnderflows)
{
    EXPECT_EQ(0, ZORMathVector().GetLength());
    EXPECT_EQ(5, ZORMathVector(3, 0, -4).GetLength());
    EXPECT_DOUBLE_EQ(5e300, ZORMathVector(3e300, 4e300, 0).GetLength());
    EXPECT_DOUBLE_EQ(5e-300, ZORMathVector(0, 3e-300, 4e-300).GetLength());
    EXPECT_EQ(std::numeric_limits<double>::denorm_min(),
              ZORMathVector(0, 0, std::numeric_limits<double>::denorm_min()).GetLength());
    EXPECT_EQ(kInfinity, ZORMathVector(-kInfinity, 0, 1).GetLength());
    EXPECT_TRUE(std::isnan(ZORMathVector(1, kNotANumber, 0).GetLength()));
}

} // namespace
