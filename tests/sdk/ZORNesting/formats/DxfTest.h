// Translations of DXF files.

#pragma once

#include "sdk/ZORNesting/TranslationTest.h"

#include <numbers>

constexpr double kPi = std::numbers::pi;

class DxfTest : public TranslationTest
{
protected:
    DxfTest()
        : TranslationTest("dxf")
    {
    }

    QStringList DescribeOnly(const QByteArray& content)
    {
        const QList<ZORNestResult> results = Translate(content);
        EXPECT_EQ("", failure);
        EXPECT_EQ(1, results.size());
        return results.isEmpty() ? QStringList() : Describe(results.constFirst());
    }
};
