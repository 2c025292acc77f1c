#include "ZORVisVectorText.h"

#include "text/ZORVisVectorTextLayout_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <algorithm>
#include <cmath>

namespace {

double FiniteOrZero(double value)
{
    return std::isfinite(value) ? value : 0;
}

ZORMathVector FiniteOrZero(const ZORMathVector& v)
{
    return {FiniteOrZero(v.GetX()), FiniteOrZero(v.GetY()), FiniteOrZero(v.GetZ())};
}

/// The codes from 0 to \a last.
template<class Code>
QList<Code> GetCodes(Code last)
{
    QList<Code> codes;
    for (int code = 0; code <= last; ++code)
        codes.append(static_cast<Code>(code));
    return codes;
}

/// \a code, or the first one where it is unknown.
template<class Code>
Code KnownOrFirst(Code code, Code last)
{
    return code >= 0 && code <= last ? code : Code();
}

} // namespace

ZORVisVectorText::ZORVisVectorText()
{
    ZOR_TRACE_CALL();
    d = new ZORVisVectorTextData;
}

ZORVisVectorText::ZORVisVectorText(const ZORVisVectorText& other) = default;
ZORVisVectorText::ZORVisVectorText(ZORVisVectorText&& other) noexcept = default;
ZORVisVectorText& ZORVisVectorText::operator=(const ZORVisVectorText& other) = default;
ZORVisVectorText& ZORVisVectorText::operator=(ZORVisVectorText&& other) noexcept = default;
ZORVisVectorText::~ZORVisVectorText() = default;

QList<ZORVisVectorText::Anchor> ZORVisVectorText::GetAnchors()
{
    return GetCodes(TopRight);
}

QString ZORVisVectorText::GetAnchorLabel(Anchor anchor)
{
    switch (anchor) {
    case BaselineLeft:
        return tr("Baseline Left");
    case BaselineCenter:
        return tr("Baseline Center");
    case BaselineRight:
        return tr("Baseline Right");
    case BottomLeft:
        return tr("Bottom Left");
    case BottomCenter:
        return tr("Bottom Center");
    case BottomRight:
        return tr("Bottom Right");
    case MiddleLeft:
        return tr("Middle Left");
    case MiddleCenter:
        return tr("Middle Center");
    case MiddleRight:
        return tr("Middle Right");
    case TopLeft:
        return tr("Top Left");
    case TopCenter:
        return tr("Top Center");
    case TopRight:
        return tr("Top Right");
    }
    return {};
}

QList<ZORVisVectorText::Orientation> ZORVisVectorText::GetOrientations()
{
    return GetCodes(Vertical);
}

QString ZORVisVectorText::GetOrientationLabel(Orientation orientation)
{
    switch (orientation) {
    case Horizontal:
        return tr("Horizontal");
    case Vertical:
        return tr("Vertical");
    }
    return {};
}

QList<ZORVisVectorText::Justification> ZORVisVectorText::GetJustifications()
{
    return GetCodes(Block);
}

QString ZORVisVectorText::GetJustificationLabel(Justification justification)
{
    switch (justification) {
    case Left:
        return tr("Left");
    case Center:
        return tr("Center");
    case Right:
        return tr("Right");
    case Block:
        return tr("Block");
    }
    return {};
}

void ZORVisVectorText::SetFont(const ZORVisVectorFont& font)
{
    ZOR_TRACE_CALL(font);
    d->font = font;
}

ZORVisVectorFont ZORVisVectorText::GetFont() const
{
    return d->font;
}

void ZORVisVectorText::SetAnchor(Anchor anchor)
{
    ZOR_TRACE_CALL(anchor);
    d->anchor = KnownOrFirst(anchor, TopRight);
}

ZORVisVectorText::Anchor ZORVisVectorText::GetAnchor() const
{
    return d->anchor;
}

void ZORVisVectorText::SetOrientation(Orientation orientation)
{
    ZOR_TRACE_CALL(orientation);
    d->orientation = KnownOrFirst(orientation, Vertical);
}

ZORVisVectorText::Orientation ZORVisVectorText::GetOrientation() const
{
    return d->orientation;
}

void ZORVisVectorText::SetJustification(Justification justification)
{
    ZOR_TRACE_CALL(justification);
    d->justification = KnownOrFirst(justification, Block);
}

ZORVisVectorText::Justification ZORVisVectorText::GetJustification() const
{
    return d->justification;
}

void ZORVisVectorText::SetDecorations(QFlags<Decoration> decorations)
{
    ZOR_TRACE_CALL(decorations);
    d->decorations = decorations;
}

QFlags<ZORVisVectorText::Decoration> ZORVisVectorText::GetDecorations() const
{
    return d->decorations;
}

void ZORVisVectorText::SetLineSpacing(double spacing)
{
    ZOR_TRACE_CALL(spacing);
    d->lineSpacing = FiniteOrZero(spacing);
}

double ZORVisVectorText::GetLineSpacing() const
{
    return d->lineSpacing;
}

void ZORVisVectorText::SetCharacterSpacing(double spacing)
{
    ZOR_TRACE_CALL(spacing);
    d->characterSpacing = FiniteOrZero(spacing);
}

double ZORVisVectorText::GetCharacterSpacing() const
{
    return d->characterSpacing;
}

void ZORVisVectorText::SetTextSize(double size)
{
    ZOR_TRACE_CALL(size);
    d->textSize = FiniteOrZero(size);
}

double ZORVisVectorText::GetTextSize() const
{
    return d->textSize;
}

void ZORVisVectorText::SetTiltAngle(double angle)
{
    ZOR_TRACE_CALL(angle);
    d->tiltAngle = std::clamp(FiniteOrZero(angle), -largestTiltAngle, largestTiltAngle);
}

double ZORVisVectorText::GetTiltAngle() const
{
    return d->tiltAngle;
}

void ZORVisVectorText::SetPlane(const ZORMathPlane& plane)
{
    ZOR_TRACE_CALL(plane);
    d->plane.SetOrigin(ZORMathPoint() + FiniteOrZero(PositionVector(plane.GetOrigin())));
    d->plane.SetDirections(FiniteOrZero(plane.GetFirstDirection()), FiniteOrZero(plane.GetSecondDirection()));
}

ZORMathPlane ZORVisVectorText::GetPlane() const
{
    return d->plane;
}

void ZORVisVectorText::SetText(const QString& text)
{
    ZOR_TRACE_CALL(text);
    d->text = text;
}

QString ZORVisVectorText::GetText() const
{
    return d->text;
}

QList<ZORMathSetOfPoints> ZORVisVectorText::GetPolylines() const
{
    return ZORVisVectorTextLayout(*d).CreatePolylines();
}

void ZorTraceAppend(QByteArray& out, const ZORVisVectorText& text)
{
    out += '(';
    ZorTraceAppend(out, text.d->font);
    out += ", ";
    ZorTraceAppend(out, text.d->textSize);
    out += ", ";
    ZorTraceAppend(out, text.d->text);
    out += ')';
}
