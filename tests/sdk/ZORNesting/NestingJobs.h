// Parts and jobs for the tests of nesting.

#pragma once

#include <ZORNesting/ZORNestNestingInput.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestResultWriter.h>

#include <QBuffer>

#include <limits>

constexpr double kRoll = std::numeric_limits<double>::quiet_NaN(); // as a length

inline QByteArray WriteResult(const ZORNestResult& result)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZORNestResultWriter(&buffer).Write(result);
    return buffer.data();
}

inline ZORNestResult ReadResult(const QByteArray& file)
{
    QByteArray bytes = file;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return ZORNestResultReader(&buffer).Read(nullptr);
}

/// A closed chain of lines on the layer of outlines.
inline QList<ZORNestResultSegment> MakeRing(const QList<ZORMathPoint>& corners)
{
    QList<ZORNestResultSegment> segments;
    for (qsizetype i = 0; i < corners.size(); ++i) {
        segments.append(ZORNestResultSegment::CreateLine(corners[i], corners[(i + 1) % corners.size()]));
        segments.last().SetLayer(ZORNestResultSegment::Nest);
    }
    return segments;
}

inline QList<ZORNestResultSegment> MakeRectangle(double width, double height, double x = 0, double y = 0)
{
    return MakeRing({{x, y, 0}, {x + width, y, 0}, {x + width, y + height, 0}, {x, y + height, 0}});
}

inline QList<ZORNestResultSegment> MakeCircle(double radius, double x, double y)
{
    using Segment = ZORNestResultSegment;
    Segment circle = Segment::CreateCircle(Segment::ArcCounterClockwise, {x + radius, y, 0}, {x, y, 0});
    circle.SetLayer(Segment::Nest);
    return {circle};
}

inline ZORNestResultShape MakeHole(const QList<ZORNestResultSegment>& segments)
{
    ZORNestResultShape hole(segments);
    hole.SetRawShapeFather(0);
    hole.SetShapeHole(1);
    return hole;
}

/// A part file with one item of these shapes.
inline QByteArray MakePart(const QList<ZORNestResultShape>& shapes)
{
    ZORNestResultItem item(QStringLiteral("drawn"));
    item.SetPartName(QStringLiteral("drawn"));
    for (const ZORNestResultShape& shape : shapes)
        item.AddShape(shape);
    ZORNestResult result(ZORNestResult::Translation);
    result.AddItem(item);
    return WriteResult(result);
}

inline ZORNestNestingInputItem MakeItem(const QString& name, const QByteArray& part, int quantity = 1)
{
    ZORNestNestingInputItem item(name, part);
    item.SetQuantity(quantity);
    return item;
}

inline ZORNestNestingInputItem MakeSquare(const QString& name, double side, int quantity = 1)
{
    return MakeItem(name, MakePart({ZORNestResultShape(MakeRectangle(side, side))}), quantity);
}

inline ZORNestNestingInputPackaging MakeSheets(const QString& name, double width, double length,
                                               int quantity = 1)
{
    ZORNestNestingInputPackaging packaging(name, width, length);
    packaging.SetQuantity(quantity);
    return packaging;
}

/// A job that ends after a few moves of parts, the same at every time.
inline ZORNestNestingInput MakeJob(const QList<ZORNestNestingInputItem>& items,
                                   const QList<ZORNestNestingInputPackaging>& packagings)
{
    ZORNestNestingInput input(QStringLiteral("material"), 0.25, items, packagings);
    input.SetMaxSteps(300);
    return input;
}
