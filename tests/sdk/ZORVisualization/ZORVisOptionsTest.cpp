#include "support/SharedValue.h"

#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

QByteArray TraceOf(const ZORVisOptions& options)
{
    QByteArray line;
    ZorTraceAppend(line, options);
    return line;
}

} // namespace

TEST(ZORVisOptionsTest, TheCodesOfStylesAndSymbolsAreThoseOfTheirNames)
{
    EXPECT_EQ(ZORVisOptions::Solid, 0);
    EXPECT_EQ(ZORVisOptions::OneDashOneDot, 3);
    EXPECT_EQ(ZORVisOptions::Chain, 4);
    EXPECT_EQ(ZORVisOptions::TwoDashTwoDot, 7);
    EXPECT_EQ(ZORVisOptions::TwoDashChain, 8);
    EXPECT_EQ(ZORVisOptions::LongDashThreeDot, ZORVisOptions::lineStyleCount - 1);
    EXPECT_EQ(ZORVisOptions::Cross, 0);
    EXPECT_EQ(ZORVisOptions::NestingDot, 7);
    EXPECT_EQ(ZORVisOptions::FullSquare2, ZORVisOptions::pointSymbolCount - 1);
}

TEST(ZORVisOptionsTest, AnInvalidColorIsKeptAndDrawnAsTheDefault)
{
    ZORVisOptions options;
    options.SetColor(QColor(1, 2, 3));
    EXPECT_EQ(options.GetDrawnColor(), QColor(1, 2, 3));
    options.SetColor(QColor());
    EXPECT_FALSE(options.GetColor().isValid());
    EXPECT_EQ(options.GetDrawnColor(), QColor(160, 160, 164));
}

TEST(ZORVisOptionsTest, ThicknessIsDrawnWithinItsLimits)
{
    ZORVisOptions options;
    const auto drawn = [&](double thickness) {
        options.SetLineThickness(thickness);
        return options.GetDrawnThickness();
    };
    EXPECT_EQ(drawn(8), 8);
    EXPECT_EQ(drawn(0), 1);
    EXPECT_EQ(drawn(-3), 1);
    EXPECT_EQ(drawn(1e300), 32);
    EXPECT_EQ(drawn(std::numeric_limits<double>::quiet_NaN()), 1);
}

TEST(ZORVisOptionsTest, TextSizeIsDrawnAsTheDefaultUnlessItIsUsable)
{
    ZORVisOptions options;
    const auto drawn = [&](double size) {
        options.SetTextSize(size);
        return options.GetDrawnTextSize();
    };
    EXPECT_EQ(drawn(20), 20);
    EXPECT_EQ(drawn(0), 13);
    EXPECT_EQ(drawn(std::numeric_limits<double>::infinity()), 13);
}

TEST(ZORVisOptionsTest, PrintsItselfInTraces)
{
    ZORVisOptions options;
    EXPECT_EQ(TraceOf(options), "(none, 1, 0, 0, 13)");
    options.SetColor(Qt::red);
    options.SetLineStyle(ZORVisOptions::Chain);
    EXPECT_EQ(TraceOf(options), "(#ffff0000, 1, 4, 0, 13)");
}

TEST(ZORVisOptionsTest, CopiesAreIndependent)
{
    const ZORVisOptions options;
    ExpectSharedValue(
        options, [](ZORVisOptions& changed) { changed.SetLineThickness(3); },
        [](const ZORVisOptions& value) { return value.GetLineThickness(); });
    ExpectSharedValue(
        options, [](ZORVisOptions& changed) { changed.SetColor(QColor(1, 2, 3)); },
        [](const ZORVisOptions& value) { return value.GetColor().name().toStdString(); });
    ExpectSharedValue(
        ZORVisVectorText(), [](ZORVisVectorText& changed) { changed.SetTextSize(3); },
        [](const ZORVisVectorText& value) { return value.GetTextSize(); });
}

TEST(ZORVisOptionsTest, OptionsAreEqualIfAllTheirValuesAre)
{
    const ZORVisOptions options;
    EXPECT_EQ(options, ZORVisOptions());
    const auto expectDifferent = [&options](const auto& change) {
        ZORVisOptions changed = options;
        change(changed);
        EXPECT_NE(options, changed);
        changed = options;
        EXPECT_EQ(options, changed);
    };
    expectDifferent([](ZORVisOptions& changed) { changed.SetColor(Qt::red); });
    expectDifferent([](ZORVisOptions& changed) { changed.SetLineThickness(2); });
    expectDifferent([](ZORVisOptions& changed) { changed.SetLineStyle(ZORVisOptions::Dash); });
    expectDifferent([](ZORVisOptions& changed) { changed.SetPointSymbol(ZORVisOptions::Star); });
    expectDifferent([](ZORVisOptions& changed) { changed.SetTextSize(2); });
}
