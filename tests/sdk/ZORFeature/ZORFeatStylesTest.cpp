#include "support/ContainerFiles.h"
#include "support/Printers.h"
#include "support/SharedValue.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QCborMap>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

ZORGeoSurface* AddSurface(ZORGeoContainer& container)
{
    auto* const surface = new ZORGeoSurface(&container, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    surface->Initialize();
    return surface;
}

ZORGeoGeometry* AddPoint(ZORGeoContainer& container)
{
    auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    point->Initialize();
    return point;
}

ZORFeatStyle RedStyle()
{
    ZORFeatStyle style;
    style.SetColor(Qt::red);
    style.SetOpacity(0.25);
    style.SetLineWidth(7);
    style.SetPointSymbol(ZORVisOptions::Star);
    style.SetDisplay(ZORVisOptions::Wireframe);
    return style;
}

// What people with a deficient kind of cone see of a color, in linear light, after Brettel's projections with one
// half plane.
std::array<double, 3> SeenBy(const QColor& color, const std::array<std::array<double, 3>, 3>& vision)
{
    std::array<double, 3> linear{};
    const std::array<double, 3> srgb{color.redF(), color.greenF(), color.blueF()};
    for (size_t i = 0; i < 3; ++i)
        linear.at(i) = std::pow(srgb.at(i), 2.2);
    std::array<double, 3> seen{};
    for (size_t i = 0; i < 3; ++i) {
        for (size_t k = 0; k < 3; ++k)
            seen.at(i) += vision.at(i).at(k) * linear.at(k);
        seen.at(i) = std::pow(std::clamp(seen.at(i), 0.0, 1.0), 1 / 2.2);
    }
    return seen;
}

double Distance(const std::array<double, 3>& a, const std::array<double, 3>& b)
{
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

class ZORFeatStylesTest : public testing::Test
{
protected:
    ZORFeatContainer container;
    ZORFeatStyles* const styles = container.GetStyles();
};

} // namespace

TEST(ZORFeatStyleTest, SharesItsData)
{
    ExpectSharedValue(
        RedStyle(), [](ZORFeatStyle& style) { style.SetLineWidth(3); },
        [](const ZORFeatStyle& style) { return style.GetLineWidth(); });
}

TEST(ZORFeatStyleTest, KeepsWhatCanBeDrawn)
{
    ZORFeatStyle style = RedStyle();
    const ZORFeatStyle before = style;
    style.SetColor(QColor());
    style.SetOpacity(kNaN);
    style.SetLineWidth(kNaN);
    style.SetPointSymbol(ZORFeatStyle::PointSymbol(ZORVisOptions::pointSymbolCount));
    style.SetDisplay(ZORFeatStyle::Display(-1));
    EXPECT_EQ(before, style);
    style.SetOpacity(-1);
    EXPECT_EQ(0, style.GetOpacity());
    style.SetOpacity(2);
    EXPECT_EQ(1, style.GetOpacity());
    style.SetLineWidth(0);
    EXPECT_EQ(ZORFeatStyle::kMinimumLineWidth, style.GetLineWidth());
    style.SetLineWidth(1e300);
    EXPECT_EQ(ZORFeatStyle::kMaximumLineWidth, style.GetLineWidth());
    style.SetColor(QColor(1, 2, 3, 4));
    EXPECT_EQ(QColor(1, 2, 3), style.GetColor()) << "the opacity is set apart from the color";
}

TEST(ZORFeatStyleTest, StoresWhatDiffersAndReadsWhatItKnows)
{
    const ZORFeatStyle usual;
    EXPECT_TRUE(usual.ToStored(usual).isEmpty());
    const QCborMap stored = RedStyle().ToStored(usual);
    EXPECT_EQ(5, stored.size()) << "it is visible as usual";
    EXPECT_EQ(RedStyle(), ZORFeatStyle::FromStored(stored, usual));
    QCborMap strange = stored;
    strange.insert(QStringLiteral("glow"), 3);
    EXPECT_EQ(RedStyle(), ZORFeatStyle::FromStored(strange, usual));
    const QCborMap wrong{{QStringLiteral("visible"), 0},
                         {QStringLiteral("color"), QStringLiteral("red; drop")},
                         {QStringLiteral("opacity"), QStringLiteral("1")},
                         {QStringLiteral("lineWidth"), QCborValue(kNaN)},
                         {QStringLiteral("pointSymbol"), qint64(1) << 40},
                         {QStringLiteral("display"), -7}};
    EXPECT_EQ(usual, ZORFeatStyle::FromStored(wrong, usual));
}

TEST_F(ZORFeatStylesTest, ObjectsHaveTheUsualStyleOfTheirKind)
{
    const ZORGeoGeometry* const point = AddPoint(container);
    const ZORGeoGeometry* const surface = AddSurface(container);
    EXPECT_TRUE(styles->Get(point).IsVisible());
    EXPECT_NE(styles->Get(point).GetColor(), styles->Get(surface).GetColor());
    EXPECT_EQ(ZORFeatStyles::GetPalette().constFirst(), styles->Get(surface).GetColor());
    EXPECT_FALSE(styles->IsSet(surface));
    styles->Get(nullptr); // is no fault
}

TEST_F(ZORFeatStylesTest, SurfacesGetTheColorsOfThePaletteInTheOrderOfTheirCreation)
{
    const QList<QColor> palette = ZORFeatStyles::GetPalette();
    QList<ZORGeoSurface*> surfaces;
    for (qsizetype i = 0; i <= palette.size(); ++i) {
        surfaces.append(AddSurface(container));
        AddPoint(container);
    }
    delete surfaces.takeAt(1); // before anybody has asked: nobody has seen its color
    for (qsizetype i = surfaces.size() - 1; i >= 0; --i) // in whatever order they are asked for
        EXPECT_EQ(palette[i % palette.size()], styles->Get(surfaces[i]).GetColor()) << i;
    const QColor third = styles->Get(surfaces[2]).GetColor();
    delete surfaces.takeAt(0);
    EXPECT_EQ(third, styles->Get(surfaces[1]).GetColor()) << "a color stays";
    container.Clear();
    EXPECT_EQ(palette[0], styles->Get(AddSurface(container)).GetColor()) << "the next document begins again";
}

TEST(ZORFeatPaletteTest, ColorsCanBeToldApartByEverybodyOnBothBackgrounds)
{
    const std::array<std::array<std::array<double, 3>, 3>, 4> visions{
        {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
         {{{0.11238, 0.88762, 0}, {0.11238, 0.88762, 0}, {0.00401, -0.00401, 1}}},   // without red cones
         {{{0.29275, 0.70725, 0}, {0.29275, 0.70725, 0}, {-0.02234, 0.02234, 1}}},   // without green cones
         {{{1, 0.14461, -0.14461}, {0, 0.85924, 0.14076}, {0, 0.85924, 0.14076}}}}}; // without blue cones
    const QList<QColor> palette = ZORFeatStyles::GetPalette();
    ASSERT_GE(palette.size(), 6);
    for (const auto& vision : visions) {
        for (qsizetype i = 0; i < palette.size(); ++i) {
            const auto color = SeenBy(palette[i], vision);
            const auto next = SeenBy(palette[(i + 1) % palette.size()], vision);
            EXPECT_GT(Distance(color, next), 0.2) << palette[i].name().toStdString();
            for (const QColor& background : {QColor(0xf8, 0xf8, 0xf8), QColor(0x1c, 0x1e, 0x20)})
                EXPECT_GT(Distance(color, SeenBy(background, vision)), 0.3)
                    << palette[i].name().toStdString();
        }
    }
}

TEST_F(ZORFeatStylesTest, SettingAStyleIsAChangeOfTheDocument)
{
    ZORGeoGeometry* const point = AddPoint(container);
    QSignalSpy content(&container, &ZORGeoContainer::ContentChanged);
    QSignalSpy changed(styles, &ZORFeatStyles::Changed);
    styles->Set({point, nullptr, point}, RedStyle());
    EXPECT_EQ(RedStyle(), styles->Get(point));
    EXPECT_EQ(1, content.count());
    EXPECT_EQ(1, changed.count());
    styles->Set({point}, RedStyle());
    EXPECT_EQ(1, content.count()) << "it has that style";
    styles->SetVisible({point}, false);
    EXPECT_FALSE(styles->Get(point).IsVisible());
    EXPECT_EQ(QColor(Qt::red), styles->Get(point).GetColor());
    styles->Reset({point});
    EXPECT_FALSE(styles->IsSet(point));
    EXPECT_EQ(3, content.count());
    EXPECT_EQ(3, changed.count());

    ZORFeatContainer other;
    styles->Set({AddPoint(other)}, RedStyle());
    EXPECT_EQ(3, content.count()) << "not of this container";
}

TEST_F(ZORFeatStylesTest, AStyleGoesWithItsObject)
{
    ZORGeoGeometry* point = AddPoint(container);
    styles->Set({point}, RedStyle());
    delete point;
    EXPECT_FALSE(styles->IsSet(point)); // by its address
    ZORGeoGeometry* const removedByReceiver = AddPoint(container);
    ZORGeoGeometry* const other = AddPoint(container);
    QObject::connect(styles, &ZORFeatStyles::Changed, removedByReceiver,
                     [&](ZORGeoGeometry* object) { delete (object == other ? nullptr : object); });
    styles->Set({removedByReceiver, other}, RedStyle());
    EXPECT_TRUE(styles->IsSet(other));
}

TEST_F(ZORFeatStylesTest, NewObjectsAreVisibleAsTheApplicationWants)
{
    EXPECT_TRUE(styles->Get(AddPoint(container)).IsVisible());
    styles->SetNewVisible(false);
    ZORGeoGeometry* const hidden = AddPoint(container);
    EXPECT_FALSE(styles->Get(hidden).IsVisible());
    {
        const ZORFeatShowNew show(&container);
        const ZORFeatShowNew again(&container);
        EXPECT_TRUE(styles->Get(AddPoint(container)).IsVisible());
    }
    EXPECT_FALSE(styles->Get(AddPoint(container)).IsVisible());
    styles->SetVisible({hidden}, true);
    EXPECT_FALSE(styles->IsSet(hidden)) << "as usual";
    const ZORFeatShowNew nothing(nullptr);
    auto dying = std::make_unique<ZORFeatContainer>();
    const ZORFeatShowNew outliving(dying.get());
    dying.reset();
}

TEST_F(ZORFeatStylesTest, FilesKeepOnlyWhatSomebodyMadeInvisible)
{
    styles->SetNewVisible(false);
    ZORGeoGeometry* const untouched = AddPoint(container);
    ZORGeoGeometry* const closed = AddPoint(container);
    EXPECT_EQ(1, SaveContainer(container)[8]) << "without styles";
    QSignalSpy content(&container, &ZORGeoContainer::ContentChanged);
    QSignalSpy changed(styles, &ZORFeatStyles::Changed);
    styles->SetVisible({untouched, closed}, false);
    styles->Reset({untouched, closed});
    EXPECT_EQ(0, content.count());
    styles->SetVisible({closed}, true);
    EXPECT_EQ(1, content.count());
    EXPECT_EQ(1, changed.count());
    styles->SetVisible({closed}, false);
    ZORFeatStyle style = styles->Get(untouched);
    style.SetColor(Qt::red);
    styles->Set({untouched}, style);
    EXPECT_FALSE(styles->Get(untouched).IsVisible()) << "a color does not open the eye";
    ZORFeatContainer loaded;
    ASSERT_TRUE(RoundTrips(container, loaded));
    const ZORFeatStyle red = loaded.GetStyles()->Get(loaded.GetGeometryByIndex(0));
    EXPECT_TRUE(red.IsVisible());
    EXPECT_EQ(QColor(Qt::red), red.GetColor());
    EXPECT_FALSE(loaded.GetStyles()->Get(loaded.GetGeometryByIndex(1)).IsVisible());
}

TEST_F(ZORFeatStylesTest, FilesKeepStylesAndAreAsBeforeWithout)
{
    ZORGeoGeometry* const point = AddPoint(container);
    ZORGeoGeometry* const surface = AddSurface(container);
    ZORGeoContainer plain; // knows no styles
    AddPoint(plain);
    AddSurface(plain);
    const QByteArray bare = SaveContainer(container);
    EXPECT_EQ(SaveContainer(plain), bare);
    EXPECT_EQ(1, bare[8]);

    styles->Set({surface}, RedStyle());
    styles->SetVisible({point}, false);
    const QByteArray file = SaveContainer(container);
    EXPECT_EQ(2, file[8]) << "versions of this library without styles refuse it by its version";
    ZORFeatContainer loaded;
    ASSERT_TRUE(RoundTrips(container, loaded));
    EXPECT_FALSE(loaded.GetStyles()->Get(loaded.GetGeometryByIndex(0)).IsVisible());
    EXPECT_EQ(RedStyle(), loaded.GetStyles()->Get(loaded.GetGeometryByIndex(1)));
    ZORGeoContainer unstyled;
    LoadContainer(unstyled, file);
    EXPECT_EQ(bare, SaveContainer(unstyled)) << "a container without styles reads the objects";

    LoadContainer(container, file); // import: the second pair has the same styles
    EXPECT_EQ(RedStyle(), styles->Get(container.GetGeometryByIndex(3)));
    styles->Reset({point, surface, container.GetGeometryByIndex(2), container.GetGeometryByIndex(3)});
    delete container.GetGeometryByIndex(3);
    delete container.GetGeometryByIndex(2);
    EXPECT_EQ(bare, SaveContainer(container));
}

TEST_F(ZORFeatStylesTest, DamagedStylesAreRefusedAndLeaveTheContainer)
{
    styles->Set({AddSurface(container), AddPoint(container)}, RedStyle());
    const int failed = LoadDamagedFiles(
        SaveContainer(container), [] { return std::make_unique<ZORFeatContainer>(); }, 3000, 5);
    EXPECT_GT(failed, 500);
    EXPECT_LT(failed, 3000) << "some damage only changes values";
}
