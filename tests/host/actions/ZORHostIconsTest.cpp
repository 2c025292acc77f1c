// Icons can be seen on the grounds of both themes.

#include "base/ZORHostTheme.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPalette>
#include <QRegularExpression>
#include <QStyle>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kLeastContrast = 3; // of graphics, by WCAG 2.1

double GetLuminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double GetContrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({GetLuminance(a), GetLuminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The greatest contrast of a pixel of \a image to the ground.
double GetGreatestContrast(const QImage& image, const QColor& ground)
{
    double greatest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() == 255)
                greatest = std::max(greatest, GetContrast(image.pixelColor(x, y), ground));
        }
    }
    return greatest;
}

class ZORHostIconsTest : public testing::TestWithParam<ZORHostOptions::Theme>
{
protected:
    ZORHostIconsTest() { ZORHostTheme::Apply(GetParam()); }
    ~ZORHostIconsTest() override { ZORHostTheme::Apply(ZORHostOptions::Theme::System); }
    static QColor GetGround() { return QApplication::palette().color(QPalette::Window); }
};

INSTANTIATE_TEST_SUITE_P(Themes, ZORHostIconsTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& tested) { return ZORHostTheme::ToName(tested.param).toStdString(); });

TEST_P(ZORHostIconsTest, ColorsOfLinesAndFillsStandOut)
{
    const QFileInfoList files = QDir(":/host/icons").entryInfoList({"*.svg"});
    EXPECT_GT(files.size(), 10);
    static const QRegularExpression color("#[0-9a-fA-F]{6}");
    for (const QFileInfo& info : files) {
        if (info.baseName() == "zorhost" || info.baseName() == "shaded")
            continue; // pictures with shades
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QRegularExpressionMatchIterator found = color.globalMatch(QString::fromUtf8(file.readAll()));
        while (found.hasNext()) {
            const QColor tested(found.next().captured());
            EXPECT_GE(GetContrast(tested, GetGround()), kLeastContrast)
                << info.baseName().toStdString() << ' ' << tested.name().toStdString();
        }
    }
}

TEST_P(ZORHostIconsTest, WarningsAndArrowsOfToolBarsStandOut)
{
    for (const QStyle::StandardPixmap which :
         {QStyle::SP_MessageBoxWarning, QStyle::SP_ToolBarHorizontalExtensionButton,
          QStyle::SP_ToolBarVerticalExtensionButton}) {
        const QImage image = QApplication::style()->standardIcon(which).pixmap(QSize(16, 16), 3).toImage();
        EXPECT_GE(GetGreatestContrast(image, GetGround()), kLeastContrast) << which;
    }
    const QImage warning =
        QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(QSize(48, 48), 1).toImage();
    EXPECT_GE(GetContrast(warning.pixelColor(12, 40), GetGround()), kLeastContrast);
}

} // namespace
