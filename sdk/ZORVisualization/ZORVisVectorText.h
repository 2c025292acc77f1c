// Texts made of polylines.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisVectorFont.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QCoreApplication>
#include <QFlags>
#include <QList>
#include <QSharedDataPointer>
#include <QString>

class ZORMathPlane;
class ZORVisVectorTextData;

/// Lays out a text in a plane and gives its strokes. A value: copies share their data until one of them is changed,
/// O(1). One that was moved from may only be assigned or destroyed.
///
/// Lengths are millimetres for a plane with directions of length 1: a place (x, y) of the layout, x along the
/// baseline, is the point GetPlane().Evaluate(x, y). Longer, shorter, skew or zero directions scale, slant or
/// flatten the text.
///
/// Line feeds, carriage returns (one break together with the line feed behind) and Unicode's line and
/// paragraph separators begin a new line. A tab goes to the next multiple of 8 blanks from the begin of the
/// line. A character for which the font has no strokes is drawn as an upright box unless it is white space.
///
/// Every value is accepted and no coordinate is ever infinite or not a number: numbers that are not
/// finite count as 0, unknown codes as the first of their kind, and strokes beyond the range of numbers are
/// left out. Text size 0 and zero directions give strokes without extent; a negative text size turns the
/// text by half a turn.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisVectorText
{
    Q_DECLARE_TR_FUNCTIONS(ZORVisVectorText)

public:
    /// The place of the text's box that lies at the origin of the plane. Left and right are the ends of
    /// the longest line. The baseline is that of the first line, the top the upper edge of its capitals; the
    /// bottom lies a third of the text size below the last baseline; the middle is halfway between the
    /// top and the last baseline.
    enum Anchor : int {
        BaselineLeft = 0,
        BaselineCenter = 1,
        BaselineRight = 2,
        BottomLeft = 3,
        BottomCenter = 4,
        BottomRight = 5,
        MiddleLeft = 6,
        MiddleCenter = 7,
        MiddleRight = 8,
        TopLeft = 9,
        TopCenter = 10,
        TopRight = 11
    };
    enum Orientation : int {
        Horizontal = 0, ///< lines from left to right, one below the other
        Vertical = 1    ///< lines from top to bottom, upright characters, the next line to the right
    };
    /// Where a line lies in the length of the longest one; read left as top where the text is vertical.
    enum Justification : int {
        Left = 0,
        Center = 1,
        Right = 2,
        Block =
            3 ///< as long as the longest line by wider blanks (those after the last tab); the last line and
              ///< lines without blanks are as Left
    };
    /// Lines along all of a line, white space included; of each character on its own where the text is vertical.
    enum Decoration : int {
        Underline = 1,     ///< a sixth of the text size below the baseline
        StrikeThrough = 2, ///< 3/7 of the text size above the baseline
        Overline = 4       ///< 7/6 of the text size above the baseline
    };
    Q_DECLARE_FLAGS(Decorations, Decoration)

    /// Distance between two baselines, or of two vertical lines, in text sizes; the line spacing is added.
    static constexpr double naturalLinePitch = 5.0 / 3;
    /// Largest tilt, degrees.
    static constexpr double largestTiltAngle = 85;

    /// Empty text in the first font, 10 mm high, anchored at the left end of its baseline in the x-y plane,
    /// horizontal, left-justified, without tilt, decorations and additional spacings.
    ZORVisVectorText();
    ZORVisVectorText(const ZORVisVectorText& other);
    ZORVisVectorText(ZORVisVectorText&& other) noexcept;
    ZORVisVectorText& operator=(const ZORVisVectorText& other);
    ZORVisVectorText& operator=(ZORVisVectorText&& other) noexcept;
    ~ZORVisVectorText();
    void swap(ZORVisVectorText& other) noexcept { d.swap(other.d); }

    /// All codes in the order of their numbers, and their names for users; empty for an unknown code.
    static QList<Anchor> GetAnchors();
    static QString GetAnchorLabel(Anchor anchor);
    static QList<Orientation> GetOrientations();
    static QString GetOrientationLabel(Orientation orientation);
    static QList<Justification> GetJustifications();
    static QString GetJustificationLabel(Justification justification);

    void SetFont(const ZORVisVectorFont& font);
    ZORVisVectorFont GetFont() const;
    void SetAnchor(Anchor anchor);
    Anchor GetAnchor() const;
    void SetOrientation(Orientation orientation);
    Orientation GetOrientation() const;
    void SetJustification(Justification justification);
    Justification GetJustification() const;
    void SetDecorations(QFlags<Decoration> decorations);
    QFlags<Decoration> GetDecorations() const;

    /// \param spacing  added to the natural distance of the lines, 5/3 of the text size; may be negative
    void SetLineSpacing(double spacing);
    double GetLineSpacing() const;
    /// \param spacing  added between each two characters of a line; may be negative
    void SetCharacterSpacing(double spacing);
    double GetCharacterSpacing() const;
    /// \param size  height of the capital letters
    void SetTextSize(double size);
    double GetTextSize() const;
    /// \param angle  slant of the glyphs about their baseline in degrees, positive to the right; limited to
    ///               largestTiltAngle on either side
    void SetTiltAngle(double angle);
    double GetTiltAngle() const;

    void SetPlane(const ZORMathPlane& plane);
    ZORMathPlane GetPlane() const;
    void SetText(const QString& text);
    QString GetText() const;

    /// The strokes, line by line from left to right; the decorations of a line (of a character where the text
    /// is vertical) follow its strokes. Each has two points or more; an empty text gives none, whatever its
    /// decorations. O(characters), 0.3 to 1.2 KB for each of
    /// them.
    QList<ZORMathSetOfPoints> GetPolylines() const;

    /// (font, text size, text)
    friend ZORVISUALIZATION_EXPORT void ZorTraceAppend(QByteArray& out, const ZORVisVectorText& text);

private:
    QSharedDataPointer<ZORVisVectorTextData> d;
};

Q_DECLARE_SHARED(ZORVisVectorText)
Q_DECLARE_OPERATORS_FOR_FLAGS(ZORVisVectorText::Decorations)
