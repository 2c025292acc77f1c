// Nesting jobs and measures of their sheets.

#pragma once

#include "sdk/ZORNesting/NestingTest.h"

#include <cmath>
#include <numbers>

using Response = ZORNestNestingResponse;

class NestingRunTest : public NestingTest
{
protected:
    static double GetLength(const ZORNestResult& sheet) { return sheet.GetSheet().GetUpperPoint().GetX(); }
    /// The items' orientations in whole degrees, each once, ascending.
    static QList<int> GetDegrees(const Response* response)
    {
        QList<int> degrees;
        for (const ZORNestResult& sheet : ReadSheets(response)) {
            for (const ZORNestResultItem* item : sheet.GetItems()) {
                const int angle = int(std::lround(item->GetOrientation() * 180 / std::numbers::pi)) % 360;
                if (!degrees.contains(angle))
                    degrees.append(angle);
            }
        }
        std::sort(degrees.begin(), degrees.end());
        return degrees;
    }
    static int CountMirrored(const Response* response)
    {
        int count = 0;
        for (const ZORNestResult& sheet : ReadSheets(response)) {
            for (const ZORNestResultItem* item : sheet.GetItems())
                count += item->IsMirrored() ? 1 : 0;
        }
        return count;
    }
    static QByteArray MakeWedge()
    {
        return MakePart({ZORNestResultShape(MakeRing({{0, 0, 0}, {30, 0, 0}, {0, 10, 0}}))});
    }
};
