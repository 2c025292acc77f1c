// Tests of ZORNestVisRepFactory, ZORNestVisOptions and ZORNestVisualizationManager.

#include "NestResults.h"
#include "support/Printers.h"

#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORNesting/ZORNestVisRepFactory.h>
#include <ZORNesting/ZORNestVisualizationManager.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysSettingsManager.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisRepFactory.h>

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <set>

namespace {

using Segment = ZORNestResultSegment;
using Options = ZORNestVisOptions;

const QRgb kBlack = qRgb(0, 0, 0);

QImage Draw(const ZORNestResult& result, int filters = Options::allFilters, const QSize& size = {400, 400})
{
    Options options;
    options.SetFilters(filters);
    const std::unique_ptr<ZORVisRep> rep(ZORNestVisRepFactory::CreateRep(result, options));
    return ZORVisRepFactory::CreateImage(size, {rep.get()}, QColor::fromRgb(0));
}

int CountDrawn(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) != kBlack;
    }
    return count;
}

std::set<QRgb> ColorsOf(const QImage& image)
{
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    colors.erase(kBlack);
    return colors;
}

ZORNestResultShape Circle(const ZORMathPoint& center, double radius)
{
    return ZORNestResultShape(
        {Segment::CreateCircle(Segment::ArcCounterClockwise, center + ZORMathVector(radius, 0, 0), center)});
}

ZORNestResultShape Square(const ZORMathPoint& corner, double side, Segment::Layer layer = Segment::Automatic)
{
    const ZORMathPoint b = corner + ZORMathVector(side, 0, 0);
    const ZORMathPoint c = corner + ZORMathVector(side, side, 0);
    const ZORMathPoint d = corner + ZORMathVector(0, side, 0);
    QList<Segment> segments = {Segment::CreateLine(corner, b), Segment::CreateLine(b, c),
                               Segment::CreateLine(c, d), Segment::CreateLine(d, corner)};
    for (Segment& segment : segments)
        segment.SetLayer(layer);
    return ZORNestResultShape(segments);
}

ZORNestResult ResultOf(const QList<ZORNestResultShape>& shapes, const QString& name = QString())
{
    ZORNestResultItem item(name);
    for (const ZORNestResultShape& shape : shapes)
        item.AddShape(shape);
    ZORNestResult result(ZORNestResult::Nesting);
    result.SetSheet({{-100, -100, 0}, {100, 100, 0}});
    result.AddItem(item);
    return result;
}

/// Share of the sheet that is drawn, in mm^2: the picture shows the sheet with some margin around it.
double DrawnArea(const ZORNestResult& result)
{
    ZORNestResult whole = ResultOf({Square({-100, -100, 0}, 200)});
    const QSize size(1000, 1000);
    return 40000.0 * CountDrawn(Draw(result, Options::Fill, size))
           / CountDrawn(Draw(whole, Options::Fill, size));
}

TEST(ZORNestVisRepFactoryTest, AreasAreFilledWithoutTheirHoles)
{
    using std::numbers::pi;
    EXPECT_NEAR(10000 * pi, DrawnArea(ResultOf({Circle({}, 100)})), 100);
    EXPECT_NEAR(7500 * pi, DrawnArea(ResultOf({Circle({}, 100), Circle({}, 50)})), 100);
    // An island within the hole.
    EXPECT_NEAR(8400 * pi, DrawnArea(ResultOf({Circle({}, 100), Circle({}, 50), Circle({}, 30)})), 100);
    EXPECT_NEAR(20000, DrawnArea(ResultOf({Square({-100, -100, 0}, 100), Square({0, 0, 0}, 100)})), 100);
    // Outlines that frame the sheet, so that the picture has the same scale.
    const auto corner = [](double x, double y) { return ZORMathPoint(x, y, 0); };
    const ZORNestResultShape bowTie({Segment::CreateLine(corner(-100, -100), corner(100, 100)),
                                     Segment::CreateLine(corner(100, 100), corner(100, -100)),
                                     Segment::CreateLine(corner(100, -100), corner(-100, 100)),
                                     Segment::CreateLine(corner(-100, 100), corner(-100, -100))});
    EXPECT_NEAR(20000, DrawnArea(ResultOf({bowTie})), 100);
}

TEST(ZORNestVisRepFactoryTest, WhatACrossingOutlineEnclosesTwiceIsNotFilled)
{
    // With two corners of the sheet, so that all pictures have its scale.
    const auto framed = [](const QList<ZORNestResultShape>& shapes) {
        return DrawnArea(ResultOf(shapes + QList{Square({-100, -100, 0}, 1), Square({99, 99, 0}, 1)}));
    };
    // A star of five points: its pentagon in the middle is enclosed twice.
    QList<Segment> star;
    const auto at = [](int step) {
        const double angle = 4 * std::numbers::pi / 5 * step;
        return ZORMathPoint(100 * std::sin(angle), 100 * std::cos(angle), 0);
    };
    for (int step = 0; step < 5; ++step)
        star.append(Segment::CreateLine(at(step), at(step + 1)));
    const double inner = 100 * std::pow(2 * std::cos(2 * std::numbers::pi / 5), 2); // radius of the pentagon
    const double tip =
        std::tan(72 * std::numbers::pi / 180) / 4 * std::pow(2 * inner * std::sin(std::numbers::pi / 5), 2);
    EXPECT_NEAR(5 * tip, framed({ZORNestResultShape(star)}), 100);
    // Two discs that overlap, and outlines that touch along an edge.
    const double lens = 7200 * std::acos(0.5) - 30 * std::sqrt(3 * 3600.0);
    EXPECT_NEAR(2 * std::numbers::pi * 3600 - 2 * lens,
                framed({Circle({-30, 0, 0}, 60), Circle({30, 0, 0}, 60)}), 150);
    EXPECT_NEAR(20000, framed({Square({-100, -50, 0}, 100), Square({0, -50, 0}, 100)}), 100);
}

TEST(ZORNestVisRepFactoryTest, AnOutlineOfVeryManyCrossingsIsDrawnInTheEnd)
{
    // 3,000 lines to and fro cross each other millions of times.
    std::mt19937 random(5);
    QList<Segment> segments;
    ZORMathPoint last(-100, -100, 0);
    for (int i = 1; i <= 3000; ++i) {
        const ZORMathPoint next = i == 3000
                                      ? ZORMathPoint(-100, -100, 0)
                                      : ZORMathPoint(double(random() % 200) - 100, i % 2 ? 100 : -100, 0);
        segments.append(Segment::CreateLine(last, next));
        last = next;
    }
    EXPECT_GT(CountDrawn(Draw(ResultOf({ZORNestResultShape(segments)}), Options::Fill)), 1000);
}

TEST(ZORNestVisRepFactoryTest, OpenChainsAndMarksAreNotFilled)
{
    const ZORNestResultShape open({Segment::CreateLine({-100, -100, 0}, {100, -100, 0}),
                                   Segment::CreateLine({100, -100, 0}, {100, 100, 0})});
    EXPECT_EQ(0, CountDrawn(Draw(ResultOf({open}), Options::Fill)));
    for (const auto layer : {Segment::EtchingData, Segment::LeadIn, Segment::Extra, Segment::Grain})
        EXPECT_EQ(0, CountDrawn(Draw(ResultOf({Square({}, 50, layer)}), Options::Fill)));
}

TEST(ZORNestVisRepFactoryTest, EveryLayerHasItsOwnLook)
{
    std::set<std::set<QRgb>> looks;
    for (int layer = 0; layer <= 14; ++layer) {
        if (layer == 13)
            continue;
        const QImage image = Draw(ResultOf({Square({-50, -50, 0}, 100, Segment::Layer(layer))}),
                                  Options::allFilters & ~Options::Fill);
        EXPECT_TRUE(looks.insert(ColorsOf(image)).second) << layer;
    }
}

TEST(ZORNestVisRepFactoryTest, LayersAreShownByTheirFilters)
{
    const QList<QPair<int, QList<int>>> layersOfFilters = {
        {Options::Outlines, {0, 1, 5}},    {Options::TabMarks, {2, 11, 12}}, {Options::Etching, {3, 4}},
        {Options::Leads, {7, 8}},          {Options::Strings, {9, 10}},      {Options::GrainMarks, {14}},
        {Options::Extras, {6, 13, 15, -1}}};
    for (const auto& [filter, layers] : layersOfFilters) {
        for (int layer = -1; layer <= 15; ++layer) {
            const ZORNestResult result = ResultOf({Square({-50, -50, 0}, 100, Segment::Layer(layer))});
            EXPECT_EQ(layers.contains(layer), CountDrawn(Draw(result, filter)) > 0) << filter << ' ' << layer;
        }
    }
}

TEST(ZORNestVisRepFactoryTest, SheetTextsAndLabelsHaveFiltersOfTheirOwn)
{
    EXPECT_GT(CountDrawn(Draw(ResultOf({}), Options::Sheet)), 0);
    EXPECT_EQ(0, CountDrawn(Draw(ResultOf({}), Options::allFilters & ~Options::Sheet)));
    const ZORNestResult named = ResultOf({Square({-90, -90, 0}, 180)}, QStringLiteral("Rib 7"));
    EXPECT_GT(CountDrawn(Draw(named, Options::Labels)), 100);
    EXPECT_EQ(0, CountDrawn(Draw(named, Options::Texts)));
    const ZORNestResult text =
        ResultOf({ZORNestResultShape({Segment::CreateText({}, {}, QStringLiteral("Rib 7"))})});
    EXPECT_GT(CountDrawn(Draw(text, Options::Texts | Options::Outlines)), 20);
    EXPECT_EQ(0, CountDrawn(Draw(text, Options::Outlines)));
    EXPECT_EQ(0, CountDrawn(Draw(text, Options::Texts)));
    EXPECT_EQ(0, CountDrawn(Draw(CreateResultOfEverything(), 0)));
}

/// Of the label and what else is shown.
ZORMathBoundingBox BoxOfLabel(const ZORNestResult& result, int otherFilters = 0)
{
    Options options;
    options.SetFilters(Options::Labels | otherFilters);
    const std::unique_ptr<ZORVisRep> rep(ZORNestVisRepFactory::CreateRep(result, options));
    return rep->GetBoundingBox();
}

bool IsWithin(const ZORMathBoundingBox& box, double lower, double upper)
{
    return box.GetLowerPoint().GetX() > lower && box.GetLowerPoint().GetY() > lower
           && box.GetUpperPoint().GetX() < upper && box.GetUpperPoint().GetY() < upper;
}

double DistanceFromOrigin(const ZORMathBoundingBox& box)
{
    return std::hypot(std::clamp(0.0, box.GetLowerPoint().GetX(), box.GetUpperPoint().GetX()),
                      std::clamp(0.0, box.GetLowerPoint().GetY(), box.GetUpperPoint().GetY()));
}

TEST(ZORNestVisRepFactoryTest, LabelsStandOnTheCentreOfMassWhereThereIsRoom)
{
    const ZORMathBoundingBox box =
        BoxOfLabel(ResultOf({Square({-90, -90, 0}, 180)}, QStringLiteral("HHHHHH")));
    EXPECT_NEAR(0, box.GetCenter().GetX(), 3);
    EXPECT_NEAR(0, box.GetCenter().GetY(), 3);
    EXPECT_GT(box.GetUpperPoint().GetX() - box.GetLowerPoint().GetX(), 90);
}

TEST(ZORNestVisRepFactoryTest, LabelsKeepOffHoles)
{
    const ZORMathBoundingBox box =
        BoxOfLabel(ResultOf({Square({-90, -90, 0}, 180), Circle({}, 40)}, QStringLiteral("HHHHHH")));
    EXPECT_TRUE(IsWithin(box, -90, 90));
    EXPECT_GT(DistanceFromOrigin(box), 40);
    EXPECT_GT(box.GetUpperPoint().GetX() - box.GetLowerPoint().GetX(), 90);
    // In a narrow frame they are smaller.
    const ZORMathBoundingBox small =
        BoxOfLabel(ResultOf({Square({-90, -90, 0}, 180), Circle({}, 75)}, QStringLiteral("HHHHHH")));
    EXPECT_TRUE(IsWithin(small, -90, 90));
    EXPECT_GT(DistanceFromOrigin(small), 75);
}

TEST(ZORNestVisRepFactoryTest, LabelsKeepOffMarksThatAreShown)
{
    Segment mark = Segment::CreateLine({-80, 0, 0}, {80, 0, 0});
    mark.SetLayer(Segment::Grain);
    const ZORNestResult result =
        ResultOf({Square({-90, -90, 0}, 180), ZORNestResultShape({mark})}, QStringLiteral("HHHH"));
    const ZORMathBoundingBox alone = BoxOfLabel(result);
    EXPECT_LT(alone.GetLowerPoint().GetY(), -10);
    EXPECT_GT(alone.GetUpperPoint().GetY(), 10);
    const ZORMathBoundingBox both = BoxOfLabel(result, Options::GrainMarks);
    EXPECT_NEAR(0, std::min(-both.GetLowerPoint().GetY(), both.GetUpperPoint().GetY()), 1e-9);
    EXPECT_GT(std::max(-both.GetLowerPoint().GetY(), both.GetUpperPoint().GetY()), 20);
}

TEST(ZORNestVisRepFactoryTest, LabelsWithoutRoomStandOnTheCentreOfMass)
{
    const ZORMathBoundingBox box =
        BoxOfLabel(ResultOf({Square({-90, -90, 0}, 180), Square({-88, -88, 0}, 176)}, QStringLiteral("HH")));
    EXPECT_NEAR(0, box.GetCenter().GetX(), 3);
    EXPECT_NEAR(0, box.GetCenter().GetY(), 3);
    // Without an outline on the middle of the box.
    const ZORMathBoundingBox open = BoxOfLabel(ResultOf(
        {ZORNestResultShape({Segment::CreateLine({10, 10, 0}, {50, 90, 0})})}, QStringLiteral("HH")));
    EXPECT_NEAR(30, open.GetCenter().GetX(), 3);
    EXPECT_NEAR(50, open.GetCenter().GetY(), 3);
}

TEST(ZORNestVisRepFactoryTest, LabelsOfAnyExtentAreHarmless)
{
    for (const double extent : {0.0, 1e-300, 1e-9, 1e12, 1e300, 1.7e308}) {
        const ZORNestResultShape shape({Segment::CreateLine({-extent, -extent, 0}, {extent, -extent, 0}),
                                        Segment::CreateLine({extent, -extent, 0}, {extent, extent, 0}),
                                        Segment::CreateLine({extent, extent, 0}, {-extent, -extent, 0})});
        EXPECT_EQ(QSize(50, 50),
                  Draw(ResultOf({shape}, QStringLiteral("P")), Options::allFilters, {50, 50}).size())
            << extent;
    }
}

TEST(ZORNestVisRepFactoryTest, OwnColoursAndLineStylesReplaceThoseOfTheLayer)
{
    Segment line = Segment::CreateLine({-90, 0, 0}, {90, 0, 0});
    const int solid = CountDrawn(Draw(ResultOf({ZORNestResultShape({line})}), Options::Outlines));
    line.SetLineStyle(ZORVisOptions::Dot);
    EXPECT_LT(CountDrawn(Draw(ResultOf({ZORNestResultShape({line})}), Options::Outlines)), solid);
    line.SetLineStyle(99);
    EXPECT_EQ(solid, CountDrawn(Draw(ResultOf({ZORNestResultShape({line})}), Options::Outlines)));
    line.SetColor(QColor(255, 0, 0));
    for (const QRgb color : ColorsOf(Draw(ResultOf({ZORNestResultShape({line})}), Options::Outlines)))
        EXPECT_TRUE(qRed(color) > 0 && qGreen(color) == 0 && qBlue(color) == 0);
}

TEST(ZORNestVisRepFactoryTest, TextsHaveTheirPlaceAngleAndWidth)
{
    const auto boxOf = [](double angle, double width, Segment::TextJustification justification) {
        Segment text = Segment::CreateText({10, 20, 0}, {}, QStringLiteral("HHHH"));
        text.SetTextAngle(angle);
        text.SetTextWidth(width);
        text.SetTextJustification(justification);
        ZORNestResult result(ZORNestResult::Nesting);
        ZORNestResultItem item;
        item.AddShape(ZORNestResultShape({text}));
        result.AddItem(item);
        const std::unique_ptr<ZORVisRep> rep(ZORNestVisRepFactory::CreateRep(result, Options()));
        return rep->GetBoundingBox();
    };
    const ZORMathBoundingBox plain = boxOf(0, 1, Segment::BaselineLeft);
    EXPECT_NEAR(20, plain.GetLowerPoint().GetY(), 0.01);
    EXPECT_NEAR(30, plain.GetUpperPoint().GetY(), 0.01);
    EXPECT_GE(plain.GetLowerPoint().GetX(), 10);
    const double width = plain.GetUpperPoint().GetX() - 10;
    EXPECT_NEAR(10 + width / 2, boxOf(0, 0.5, Segment::BaselineLeft).GetUpperPoint().GetX(), 0.01);
    const ZORMathBoundingBox upright = boxOf(std::numbers::pi / 2, 1, Segment::BaselineLeft);
    EXPECT_NEAR(20 + width, upright.GetUpperPoint().GetY(), 0.01);
    EXPECT_NEAR(0, upright.GetLowerPoint().GetX(), 0.01);
    EXPECT_NEAR(20, boxOf(0, 1, Segment::TopLeft).GetUpperPoint().GetY(), 0.01);
}

TEST(ZORNestVisRepFactoryTest, PicturesAreTheSameFromRunToRun)
{
    const ZORNestResult result = CreateResultOfEverything();
    EXPECT_EQ(Draw(result), Draw(result));
}

TEST(ZORNestVisRepFactoryTest, EverySizeGivesAPictureOrNull)
{
    const ZORNestResult result = ResultOf({Circle({}, 50)}, QStringLiteral("P"));
    for (const QSize& size : {QSize(1, 1), QSize(1, 500), QSize(333, 77)})
        EXPECT_EQ(size, Draw(result, Options::allFilters, size).size());
    for (const QSize& size : {QSize(0, 10), QSize(10, 0), QSize(-1, -1), QSize(-2147483647, 5)})
        EXPECT_TRUE(Draw(result, Options::allFilters, size).isNull());
}

TEST(ZORNestVisRepFactoryTest, EmptyAndInvalidResultsDrawNothing)
{
    EXPECT_EQ(0, CountDrawn(Draw(ZORNestResult())));
    EXPECT_EQ(0, CountDrawn(Draw(ZORNestResult(ZORNestResult::Nesting))));
    ZORNestResult empty(ZORNestResult::Nesting);
    empty.AddItem(ZORNestResultItem(QStringLiteral("empty")));
    ZORNestResultItem hollow(QStringLiteral("hollow"));
    hollow.AddShape(ZORNestResultShape());
    hollow.AddShape(ZORNestResultShape({Segment::CreateSpline({})}));
    empty.AddItem(hollow);
    EXPECT_EQ(0, CountDrawn(Draw(empty)));
}

TEST(ZORNestVisRepFactoryTest, ManagerTakesTheFiltersFromTheSettings)
{
    auto* const manager = ZORNestVisualizationManager::GetInstance();
    ZORSysSettingsManager::GetManager()->SetSource(nullptr);
    EXPECT_EQ(Options(), manager->GetOptionsFromCurrentSetting());
    EXPECT_EQ(65535, Options().GetFilters());
    EXPECT_THROW(manager->SetOptionsInCurrentSetting(Options()), ZORSysException);

    const QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    ZORSysSettingsManager::GetManager()->SetSource(&settings);
    EXPECT_EQ(Options(), manager->GetOptionsFromCurrentSetting());
    Options options;
    options.SetFilters(Options::Outlines | Options::Labels);
    manager->SetOptionsInCurrentSetting(options);
    EXPECT_EQ(options, manager->GetOptionsFromCurrentSetting());
    EXPECT_EQ(Options::Outlines | Options::Labels, settings.value("Nesting/Visualization/Filters").toInt());
    settings.setValue("Nesting/Visualization/Filters", QStringLiteral("many"));
    EXPECT_EQ(Options(), manager->GetOptionsFromCurrentSetting());
    ZORSysSettingsManager::GetManager()->SetSource(nullptr);
}

} // namespace
