#include "ZORNestPlacedItem_p.h"
#include "drawing/ZORNestArc_p.h"

#include <algorithm>

namespace {

using Segment = ZORNestResultSegment;
using ZORNestSolver::Transform;

ZORMathPoint Place(const Transform& transform, const ZORMathPoint& point)
{
    const ZORNestSolver::Point placed = transform.Apply(zor::nest::Flattened(point));
    return {placed.x, placed.y, point.GetZ()};
}

Segment::SegmentType Turned(Segment::SegmentType type, bool isMirrored)
{
    return isMirrored ? Segment::SegmentType(-int(type)) : type;
}

/// A line, an arc or a segment of another kind; \a sub as in ZORNestResultSegment::GetType().
Segment PlacePiece(const Segment& segment, int sub, const Transform& transform, bool isMirrored)
{
    const Segment::SegmentType type = segment.GetType(sub);
    const ZORMathPoint start = Place(transform, segment.GetStartPoint(sub));
    const ZORMathPoint end = Place(transform, segment.GetEndPoint(sub));
    switch (type) {
    case Segment::Line:
        return Segment::CreateLine(start, end);
    case Segment::ArcClockwise:
    case Segment::ArcCounterClockwise:
        return Segment::CreateArc(Turned(type, isMirrored), start, end,
                                  Place(transform, segment.GetArcCenter(sub)));
    default:
        return Segment::CreateOther(type, start, end);
    }
}

Segment PlaceSpline(const Segment& segment, const Transform& transform, bool isMirrored)
{
    QList<Segment> pieces;
    for (int sub = 0; sub < segment.GetNumSplineGeometry(); ++sub)
        pieces.append(PlacePiece(segment, sub, transform, isMirrored));
    return Segment::CreateSpline(pieces);
}

/// What is on the left of its box comes to lie on the right of it.
Segment::TextJustification Opposite(Segment::TextJustification justification)
{
    if (justification < Segment::BaselineLeft || justification > Segment::TopRight)
        return Segment::BaselineRight; // numbers without a meaning are drawn as BaselineLeft
    const int column = int(justification) % 3;
    return Segment::TextJustification(int(justification) - column + (2 - column));
}

// On a mirrored part the box of a text is mirrored, and the letters run the other way in it.
Segment PlaceText(const Segment& text, const Transform& transform, const ZORNestSolver::Pose& pose)
{
    Segment placed = Segment::CreateText(Place(transform, text.GetStartPoint()),
                                         Place(transform, text.GetEndPoint()), text.GetText());
    placed.SetTextHeight(text.GetTextHeight());
    placed.SetTextWidth(text.GetTextWidth());
    placed.SetTextTiltAngle(text.GetTextTiltAngle());
    placed.SetFont(text.GetFont());
    placed.SetTextAngle(pose.angle + (pose.mirrored ? -text.GetTextAngle() : text.GetTextAngle()));
    placed.SetTextJustification(pose.mirrored ? Opposite(text.GetTextJustification())
                                              : text.GetTextJustification());
    return placed;
}

Segment PlaceSegment(const Segment& segment, const Transform& transform, const ZORNestSolver::Pose& pose)
{
    Segment placed = segment.GetType() == Segment::Text ? PlaceText(segment, transform, pose)
                     : segment.GetType() == Segment::Spline
                         ? PlaceSpline(segment, transform, pose.mirrored)
                         : PlacePiece(segment, -1, transform, pose.mirrored);
    placed.SetLayer(segment.GetLayer());
    placed.SetColor(segment.GetColor());
    placed.SetLineStyle(segment.GetLineStyle());
    return placed;
}

ZORNestResultShape PlaceShape(const ZORNestResultShape& shape, const Transform& transform,
                              const ZORNestSolver::Pose& pose)
{
    QList<Segment> segments;
    for (const Segment& segment : shape.GetSegments())
        segments.append(PlaceSegment(segment, transform, pose));
    ZORNestResultShape placed(segments);
    placed.SetRawShapeFather(shape.GetRawShapeFather());
    placed.SetShapeHole(shape.GetShapeHole());
    placed.SetShapeStatus(shape.GetShapeStatus());
    return placed;
}

} // namespace

ZORNestResultItem ZORNestPlaceItem(const ZORNestResultItem& item, const QString& name,
                                   const ZORNestSolver::Pose& pose)
{
    const Transform transform(pose);
    ZORNestResultItem placed(name);
    placed.SetPartName(item.GetPartName().isEmpty() ? item.GetName() : item.GetPartName());
    placed.SetAssemblyName(item.GetAssemblyName());
    placed.SetSubassemblyName(item.GetSubassemblyName());
    placed.SetJobName(item.GetJobName());
    placed.SetComment(item.GetComment());
    placed.SetPosition(Place(transform, item.GetPosition()));
    placed.SetOrientation(ZORNestSolver::NormalizeAngle(
        pose.angle + (pose.mirrored ? -item.GetOrientation() : item.GetOrientation())));
    placed.SetMirrored(item.IsMirrored() != pose.mirrored);
    for (const ZORNestResultShape* shape : item.GetShapes())
        placed.AddShape(PlaceShape(*shape, transform, pose));
    return placed;
}
