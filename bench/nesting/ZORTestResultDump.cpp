#include "nesting/ZORTestResultDump.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORNesting/ZORNestResult.h>

#include <QDebug>

namespace {

using Segment = ZORNestResultSegment;

constexpr double kTolerance = 0.001; // of sampled segments
constexpr int kWhole = -1;           // the segment, not one of its parts
const char* const kDoubleRule = "========================================================"; // 56
const char* const kRule = "-----------------------------------------------------";          // 53

QString TextOf(const ZORMathPoint& point)
{
    return point.ToString('f', 3);
}

/// A rule behind some tabs, as one item of a message.
void DumpRule(const char* tabs, const char* characters)
{
    qDebug() << QByteArray(tabs).append(characters).constData();
}

/// Null for layers without a line.
const char* LayerLine(Segment::Layer layer)
{
    switch (layer) {
    case Segment::Automatic:
        return "\t\t\t\tLayer: automatic";
    case Segment::Nest:
        return "\t\t\t\tLayer: nest";
    case Segment::Tabs:
        return "\t\t\t\tLayer: tabs";
    case Segment::EtchBox:
        return "\t\t\t\tLayer: etch box";
    case Segment::EtchingData:
        return "\t\t\t\tLayer: etching data";
    case Segment::NonNestable:
        return "\t\t\t\tLayer: non-nestable";
    case Segment::Extra:
        return "\t\t\t\tLayer: extra";
    case Segment::LeadOut:
        return "\t\t\t\tLayer: lead out";
    case Segment::LeadIn:
        return "\t\t\t\tLayer: lead in";
    case Segment::LineString:
        return "\t\t\t\tLayer: line string";
    case Segment::GridString:
        return "\t\t\t\tLayer: grid string";
    case Segment::AutoNibble:
        return "\t\t\t\tLayer: auto nibble";
    case Segment::AutoBridge:
        return "\t\t\t\tLayer: auto bridge";
    case Segment::Grain:
        return "\t\t\t\tLayer: grain";
    }
    return nullptr;
}

void DumpLine(const Segment& segment)
{
    qDebug() << "\t\t\t\tType: line";
    qDebug() << "\t\t\t\tStart Point: " << TextOf(segment.GetStartPoint(kWhole));
    qDebug() << "\t\t\t\tEnd Point: " << TextOf(segment.GetEndPoint(kWhole));
}

void DumpArc(const Segment& segment)
{
    qDebug() << "\t\t\t\tType: arc";
    qDebug() << "\t\t\t\tOrientation: "
             << (segment.GetType(kWhole) == Segment::ArcClockwise ? "clockwise" : "counter-clockwise");
    qDebug() << "\t\t\t\tCenter: " << TextOf(segment.GetArcCenter(kWhole));
    const ZORMathCircle circle = segment.GetArcCircle(kWhole);
    qDebug() << "\t\t\t\tRadius: " << circle.GetRadius();
    double parameter = 0;
    if (circle.ProjectPoint(segment.GetStartPoint(kWhole), parameter) == 0) {
        qDebug() << "\t\t\t\tStart Angle: " << parameter;
        qDebug() << "\t\t\t\tStart Param: " << circle.GetParam(parameter);
    }
    parameter = 0;
    if (circle.ProjectPoint(segment.GetEndPoint(kWhole), parameter) == 0) {
        qDebug() << "\t\t\t\tEnd Angle: " << parameter;
        qDebug() << "\t\t\t\tEnd Param: " << circle.GetParam(parameter);
    }
}

void DumpSpline(const Segment& segment)
{
    qDebug() << "\t\t\t\tType: spline";
    qDebug() << "\t\t\t\tNumber of Points: " << segment.GetPoints(kTolerance).size();
    qDebug() << "\t\t\t\tSegments: ";
    for (int i = 0; i < segment.GetNumSplineGeometry(); ++i) {
        const bool isLine = segment.GetType(i) == Segment::Line;
        const QString type = QLatin1String(isLine ? "line" : "arc");
        const QString tail = isLine ? QString() : QLatin1String(" - ") + TextOf(segment.GetArcCenter(i));
        qDebug() << "\t\t\t\t\t" << i + 1 << "Type: " << type << " - " << TextOf(segment.GetStartPoint(i))
                 << " - " << TextOf(segment.GetEndPoint(i)) << tail;
    }
    qDebug() << "\t\t\t\tPoints: ";
    int number = 0;
    for (const ZORMathPoint& point : segment.GetSplinePoints())
        qDebug() << "\t\t\t\t\t" << ++number << TextOf(point);
    qDebug() << "\t\t\t\tSpline Types: ";
    number = 0;
    for (const Segment::SegmentType type : segment.GetSplineLineTypes())
        qDebug() << "\t\t\t\t\t" << ++number << "Type: " << int(type);
}

void DumpText(const Segment& segment)
{
    qDebug() << "\t\t\t\tType: Text";
    qDebug() << "\t\t\t\tStart Point: " << TextOf(segment.GetStartPoint(kWhole));
    qDebug() << "\t\t\t\tEnd Point: " << TextOf(segment.GetEndPoint(kWhole));
    qDebug() << "\t\t\t\tText: " << segment.GetText();
    qDebug() << "\t\t\t\tJustification: " << int(segment.GetTextJustification());
    qDebug() << "\t\t\t\tHeight: " << segment.GetTextHeight();
    qDebug() << "\t\t\t\tAngle: " << segment.GetTextAngle();
    qDebug() << "\t\t\t\tWidth: " << segment.GetTextWidth();
    qDebug() << "\t\t\t\tTilt Angle: " << segment.GetTextTiltAngle();
    qDebug() << "\t\t\t\tFont: " << segment.GetFont();
}

void DumpGeometry(const Segment& segment)
{
    switch (segment.GetType(kWhole)) {
    case Segment::Line:
        DumpLine(segment);
        break;
    case Segment::ArcClockwise:
    case Segment::ArcCounterClockwise:
        DumpArc(segment);
        break;
    case Segment::Spline:
        DumpSpline(segment);
        break;
    case Segment::Text:
        DumpText(segment);
        break;
    }
}

void DumpSegment(const Segment& segment, int number)
{
    qDebug() << "\t\t\t\tSegment #: " << number;
    DumpGeometry(segment);
    const QColor color = segment.GetColor();
    qDebug() << "\t\t\t\tColor: " << color;
    if (const char* const line = LayerLine(segment.GetLayer()))
        qDebug() << line;
    qDebug() << "\t\t\t\tLine Style: " << segment.GetLineStyle();
    DumpRule("\t\t\t", kRule);
    ZORDebugVizContainer::AddPolyline(segment.GetPoints(kTolerance), unsigned(color.red()),
                                      unsigned(color.green()), unsigned(color.blue()), 0, QString(), 0);
}

void DumpShape(const ZORNestResultShape& shape, qint64 place)
{
    qDebug() << "\t\t\tShape #: " << place;
    qDebug() << "\t\t\tArea: " << shape.GetArea();
    qDebug() << "\t\t\tPerimeter: " << shape.GetPerimeter();
    const ZORMathBoundingBox box = shape.GetBoundingBox();
    qDebug() << "\t\t\tBounding Box: " << TextOf(box.GetLowerPoint()) << "|" << TextOf(box.GetUpperPoint());
    qDebug() << "\t\t\tCenter of Mass: " << TextOf(shape.GetCenterOfMass());
    qDebug() << "\t\t\tShape Father: " << shape.GetRawShapeFather();
    qDebug() << "\t\t\tShape Hole: " << shape.GetShapeHole();
    qDebug() << "\t\t\tShape Status: " << shape.GetShapeStatus();
    const QList<Segment> segments = shape.GetSegments();
    qDebug() << "\t\t\tNumber of Segments: " << segments.size();
    DumpRule("\t\t\t", kDoubleRule);
    int number = 0;
    for (const Segment& segment : segments)
        DumpSegment(segment, number++);
    DumpRule("\t\t", kRule);
}

void DumpItem(const ZORNestResultItem& item)
{
    qDebug() << "\t\tItem Name: " << item.GetName();
    qDebug() << "\t\tPosition: " << TextOf(item.GetPosition());
    qDebug() << "\t\tOrientation: " << item.GetOrientation();
    qDebug() << "\t\tIs Mirrored: " << item.IsMirrored();
    qDebug() << "\t\tPart Name: " << item.GetPartName();
    qDebug() << "\t\tAssembly Name: " << item.GetAssemblyName();
    qDebug() << "\t\tSubassembly Name: " << item.GetSubassemblyName();
    qDebug() << "\t\tJob Name: " << item.GetJobName();
    qDebug() << "\t\tComment: " << item.GetComment();
    const QList<const ZORNestResultShape*> shapes = item.GetShapes();
    qDebug() << "\t\tNumber of Shapes: " << shapes.size();
    qDebug() << "\t\tShape Dump Below";
    DumpRule("\t\t", kDoubleRule);
    // The item is asked for its shapes each time: what it gives must stay the same.
    for (const ZORNestResultShape* shape : shapes)
        DumpShape(*shape, item.GetShapes().indexOf(shape));
    DumpRule("\t", kRule);
}

} // namespace

void ZORTestDumpResult(const ZORNestResult& result, const QString& path)
{
    const QList<const ZORNestResultItem*> items = result.GetItems();
    qDebug() << "Result file: " << path;
    qDebug() << "\tNumber of Items: " << items.size();
    qDebug() << "\tType of result: "
             << (result.GetResultType() == ZORNestResult::Translation ? "translation" : "nesting");
    qDebug() << "\tItems Dump below";
    DumpRule("\t", kDoubleRule);
    for (const ZORNestResultItem* item : items)
        DumpItem(*item);
}
