// Results for the tests of the nesting module.

#pragma once

#include <ZORNesting/ZORNestResult.h>

/// A stack with every kind of segment, layers 0 to 15, a hole in its father, an item without shapes, odd texts and
/// numbers.
inline ZORNestResult CreateResultOfEverything()
{
    using Segment = ZORNestResultSegment;
    QList<Segment> outline = {
        Segment::CreateLine({0, 0, 0}, {100, 0, 0}),
        Segment::CreateArc(Segment::ArcCounterClockwise, {100, 0, 0}, {100, 50, 0}, {100, 25, 0}),
        Segment::CreateSpline(
            {Segment::CreateLine({100, 50, 0}, {50, 50, 0}),
             Segment::CreateArc(Segment::ArcClockwise, {50, 50, 0}, {0, 50, 0}, {25, 50, 0})}),
        Segment::CreateLine({0, 50, 0}, {0, 0, 0}),
        Segment::CreateOther(Segment::SegmentType(17), {1, 1, 0}, {2, 2, 0}),
        Segment::CreateSpline({})};
    for (int layer = 0; layer <= 15; ++layer) {
        Segment segment = Segment::CreateLine({-0.0, 1e-300, 0.1}, {1.0 / 3, double(layer), 1e300});
        segment.SetLayer(Segment::Layer(layer));
        segment.SetLineStyle(layer - 1);
        segment.SetColor(QColor(10 * layer, 255, 0, 255 - layer));
        outline.append(segment);
    }
    Segment text =
        Segment::CreateText({5, 5, 0}, {45, 5, 0}, QStringLiteral("Rib \"\u00e4\u2116\U0001f600\"\n\t2"));
    text.SetTextAngle(0.1);
    text.SetTextTiltAngle(-0.2);
    text.SetTextWidth(0.8);
    text.SetTextJustification(Segment::TextJustification(99));
    text.SetFont(QByteArray("a\0b", 3));
    outline.append(text);

    ZORNestResultShape father(outline);
    father.SetShapeStatus(-32768);
    ZORNestResultShape hole({Segment::CreateCircle(Segment::ArcClockwise, {60, 25, 0}, {50, 25, 0})});
    hole.SetRawShapeFather(0);
    hole.SetShapeHole(1);
    ZORNestResultItem item(QStringLiteral("Rib 1"));
    item.SetPartName(QStringLiteral("Rib"));
    item.SetAssemblyName(QStringLiteral("Wing"));
    item.SetSubassemblyName(QStringLiteral("Box"));
    item.SetJobName(QStringLiteral("J-7"));
    item.SetComment(QStringLiteral("left\nhand"));
    item.SetPosition({1, -2, 3.5});
    item.SetOrientation(0.1);
    item.SetMirrored(true);
    item.AddShape(father);
    item.AddShape(hole);
    item.AddShape(ZORNestResultShape());

    ZORNestResult result(ZORNestResult::Translation);
    result.SetSheet({{0, 0, 0}, {1000, 500, 0}});
    result.SetStackSize(3);
    result.AddItem(item);
    result.AddItem(ZORNestResultItem(QStringLiteral("empty")));
    return result;
}
