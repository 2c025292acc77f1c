// A nesting result of many items.

#pragma once

#include <ZORNesting/ZORNestResult.h>

#include <cmath>
#include <numbers>

/// A grid of discs with wavy borders, every second piece an arc, each with a round hole.
inline ZORNestResult MakeResult(int numItems, int segmentsPerOutline)
{
    using Segment = ZORNestResultSegment;
    ZORNestResult result(ZORNestResult::Nesting);
    const int columns = int(std::ceil(std::sqrt(2.0 * numItems)));
    const int rows = (numItems + columns - 1) / columns;
    result.SetSheet({{0, 0, 0}, {100.0 * columns, 100.0 * rows, 0}});
    for (int i = 0; i < numItems; ++i) {
        const int row = i / columns;
        const ZORMathPoint center(100.0 * (i % columns) + 50, 100.0 * row + 50, 0);
        const auto at = [&](int step) {
            const double angle = 2 * std::numbers::pi * (step % segmentsPerOutline) / segmentsPerOutline;
            const double radius = 40 + 7 * std::sin(7 * angle + i);
            return center + ZORMathVector(radius * std::cos(angle), radius * std::sin(angle), 0);
        };
        QList<Segment> outline;
        for (int step = 0; step < segmentsPerOutline; ++step) {
            const ZORMathPoint start = at(step);
            const ZORMathPoint end = at(step + 1);
            const ZORMathVector chord = end - start;
            const ZORMathPoint inside = start + 0.5 * chord + ZORMathVector(-chord.GetY(), chord.GetX(), 0);
            outline.append(step % 2 == 0
                               ? Segment::CreateLine(start, end)
                               : Segment::CreateArc(Segment::ArcCounterClockwise, start, end, inside));
        }
        ZORNestResultItem item(QStringLiteral("Part %1").arg(i));
        item.SetPosition(center);
        item.AddShape(ZORNestResultShape(outline));
        ZORNestResultShape hole(
            {Segment::CreateCircle(Segment::ArcClockwise, center + ZORMathVector(12, 0, 0), center)});
        hole.SetRawShapeFather(0);
        hole.SetShapeHole(1);
        item.AddShape(hole);
        result.AddItem(item);
    }
    return result;
}
