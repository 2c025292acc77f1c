// Reads instances of nesting benchmarks (JSON).

#pragma once

#include "drawing/ZORNestOutline_p.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

class ZORNestDrawing;

/// The items of a benchmark instance, drawn one by one.
///
/// Every item has a "shape": {"type": "simple_polygon", "data": [[x, y] ...]},
/// {"type": "polygon", "data": {"outer": [...], "inner": [[...] ...]}} or
/// {"type": "path", "contours": [{"start": [x, y], "segs": [["L", x, y] | ["A", x, y, cx, cy, "ccw" | "cw"]
/// ...]} ...]}.
class ZORNestBenchmarkJson
{
public:
    /// Largest distance between the end of an arc and its circle, in parts of the radius.
    static constexpr double ArcTolerance = 1e-4;

    struct Item
    {
        QString name; ///< the item's, or its number in the instance
        QJsonObject shape;
    };

    /// \throws ZORSysException "no JSON: %1 (byte %2)", "no nesting instance: 'items' is missing", "JSON has more
    ///         than 4000000 lists and objects"
    static QList<Item> Read(const QByteArray& bytes);
    /// \throws ZORSysException "item '%1': ..."
    static void Draw(const Item& item, ZORNestDrawing& drawing);
};
