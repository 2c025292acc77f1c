#include "ZORNestPartFinder_p.h"
#include "ZORNestPartResult_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>

#include <limits>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestPartResult)
};

using Segment = ZORNestResultSegment;

ZORMathPoint ToPoint(ZORNestPlanePoint point)
{
    return {point.x, point.y, 0};
}

Segment MakePiece(const ZORNestPiece& piece)
{
    if (piece.IsLine())
        return Segment::CreateLine(ToPoint(piece.start), ToPoint(piece.end));
    return Segment::CreateArc(piece.turn > 0 ? Segment::ArcCounterClockwise : Segment::ArcClockwise,
                              ToPoint(piece.start), ToPoint(piece.end), ToPoint(piece.center));
}

Segment MakeSegment(const ZORNestCurve& curve)
{
    if (!curve.isSpline)
        return MakePiece(curve.pieces.constFirst());
    QList<Segment> pieces;
    for (const ZORNestPiece& piece : curve.pieces)
        pieces.append(MakePiece(piece));
    return Segment::CreateSpline(pieces);
}

void SetLook(Segment& segment, const ZORNestLook& look, Segment::Layer fallback)
{
    const auto layer = static_cast<Segment::Layer>(ZORNestPartFinder::GetLayer(look.layer));
    segment.SetLayer(layer == Segment::Automatic ? fallback : layer);
    segment.SetColor(look.color);
}

ZORNestResultShape MakeShape(const ZORNestPart::Shape& shape)
{
    QList<Segment> segments;
    for (const ZORNestCurve& curve : shape.chain.curves) {
        segments.append(MakeSegment(curve));
        SetLook(segments.last(), curve.look, shape.isMark ? Segment::EtchingData : Segment::Nest);
    }
    ZORNestResultShape result(segments);
    result.SetRawShapeFather(shape.father < 0 ? ZORNestResultShape::noFather : qint16(shape.father));
    result.SetShapeHole(shape.isHole ? 1 : 0);
    return result;
}

ZORNestResultShape MakeTexts(const QList<ZORNestDrawnText>& texts)
{
    QList<Segment> segments;
    for (const ZORNestDrawnText& text : texts) {
        Segment segment = Segment::CreateText(ToPoint(text.start), ToPoint(text.end), text.text);
        segment.SetTextHeight(text.height);
        segment.SetTextAngle(text.angle);
        segment.SetTextWidth(text.width);
        segment.SetTextTiltAngle(text.tilt);
        segment.SetTextJustification(static_cast<Segment::TextJustification>(text.justification));
        segment.SetFont(text.font.toUtf8());
        SetLook(segment, text.look, Segment::EtchingData);
        segments.append(segment);
    }
    ZORNestResultShape result(segments);
    result.SetRawShapeFather(0);
    return result;
}

} // namespace

ZORNestResult ZORNestMakePartResult(const ZORNestPart& part)
{
    constexpr int kMaximum = std::numeric_limits<qint16>::max();
    if (part.shapes.size() >= kMaximum) {
        throw ZORSysException(Texts::tr("part '%1' has more than %2 outlines and curves")
                                  .arg(part.name, QString::number(kMaximum)));
    }
    ZORNestResultItem item(part.name);
    item.SetPartName(part.name);
    item.SetAssemblyName(part.assembly);
    for (const ZORNestPart::Shape& shape : part.shapes)
        item.AddShape(MakeShape(shape));
    if (!part.texts.isEmpty())
        item.AddShape(MakeTexts(part.texts));
    ZORNestResult result(ZORNestResult::Translation);
    result.AddItem(item);
    return result;
}
