// What the tests of vector texts share.

#pragma once

#include "support/Printers.h"

#include <ZORVisualization/ZORVisVectorText.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace VectorTexts {

using Text = ZORVisVectorText;

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// In this font at this size a unit of the font is a millimeter. The letter I is one stroke from (4, 21) down
// to (4, 0) and advances by 8; a blank advances by 16, a box by 16 from x = 2 to 14.
inline constexpr double kSize = 21;
inline constexpr double kPitch = 35; // of lines, and of rows of vertical text

inline Text CreateText(const QString& string)
{
    Text text;
    text.SetFont(ZORVisVectorFont("futural"));
    text.SetTextSize(kSize);
    text.SetText(string);
    return text;
}

/// Lower ends of the strokes of a text of the letter I alone, as "x,y" each.
inline QStringList GetFeet(const Text& text)
{
    QStringList feet;
    const auto polylines = text.GetPolylines();
    for (const ZORMathSetOfPoints& points : polylines) {
        EXPECT_EQ(2, points.size());
        EXPECT_NEAR(points[0].GetX(), points[1].GetX(), 1e-12);
        EXPECT_NEAR(kSize, points[0].GetY() - points[1].GetY(), 1e-12);
        // Without the noise of divisions, and without -0.
        const auto number = [](double value) { return QString::number(std::round(value * 1e9) / 1e9 + 0.0); };
        feet.append(number(points[1].GetX()) + u',' + number(points[1].GetY()));
    }
    return feet;
}

inline void ExpectNear(const ZORMathPoint& expected, const ZORMathPoint& actual)
{
    EXPECT_NEAR(0, expected.DistanceTo(actual), 1e-9)
        << actual.GetX() << ", " << actual.GetY() << ", " << actual.GetZ();
}

inline bool IsFinite(const QList<ZORMathSetOfPoints>& polylines)
{
    for (const ZORMathSetOfPoints& points : polylines) {
        if (points.size() < 2)
            return false;
        for (const ZORMathPoint& point : points) {
            if (!point.IsFinite())
                return false;
        }
    }
    return true;
}

} // namespace VectorTexts
