// Piece of an outline or a mark of a nesting result.

#pragma once

#include <ZORMathematics/ZORMathCircle.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QColor>
#include <QCoreApplication>
#include <QList>
#include <QSharedDataPointer>
#include <QString>

class ZORNestResultSegmentData;

/// A line, an arc, a spline of lines and arcs, or a text, with the layer and look of it. A value; copies
/// share their data.
///
/// Millimetres in the coordinates of the sheet; angles in radians, counter-clockwise from the direction of x.
/// Every number is finite: makers and setters throw ZORSysException "a number of the segment is not finite".
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestResultSegment
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestResultSegment)

public:
    /// Files may hold other numbers too; such a segment has a start and an end, and nothing between them.
    enum SegmentType : int {
        ArcCounterClockwise = -1,
        Line = 0,
        ArcClockwise = 1,
        Spline = 5, ///< a chain of lines and arcs
        Text = 30
    };
    /// What a segment is for. Files may hold other numbers too.
    enum Layer : int {
        Automatic = 0,
        Nest = 1,
        Tabs = 2,
        EtchBox = 3,
        EtchingData = 4,
        NonNestable = 5,
        Extra = 6,
        LeadOut = 7,
        LeadIn = 8,
        LineString = 9,
        GridString = 10,
        AutoNibble = 11,
        AutoBridge = 12,
        Grain = 14
    };
    /// The place of a text's box that lies at its start; the box is that of ZORVisVectorText::Anchor.
    enum TextJustification : int {
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
    /// Largest gap between successive segments that still count as joined.
    static constexpr double joinTolerance = 0.001;

    /// A line from the origin to the origin.
    ZORNestResultSegment();
    ZORNestResultSegment(const ZORNestResultSegment& other);
    ZORNestResultSegment(ZORNestResultSegment&& other) noexcept;
    ZORNestResultSegment& operator=(const ZORNestResultSegment& other);
    ZORNestResultSegment& operator=(ZORNestResultSegment&& other) noexcept;
    ~ZORNestResultSegment();

    static ZORNestResultSegment CreateLine(const ZORMathPoint& start, const ZORMathPoint& end);
    /// The arc about \a center that begins at \a start, as far from the centre as that: up to the direction of
    /// \a end and then straight to it, where the end lies off the circle. Equal ends (to 1e-9 of the size)
    /// make a full circle.
    /// \param type  ArcClockwise or ArcCounterClockwise; any other throws ZORSysException "%1 is no type of an
    /// arc"
    static ZORNestResultSegment CreateArc(SegmentType type, const ZORMathPoint& start,
                                          const ZORMathPoint& end, const ZORMathPoint& center);
    static ZORNestResultSegment CreateCircle(SegmentType type, const ZORMathPoint& start,
                                             const ZORMathPoint& center)
    {
        return CreateArc(type, start, start, center);
    }
    /// The lines and arcs in their order; their layers and looks are not kept. Each starts where the one before
    /// ends: a start within joinTolerance of that is moved to it.
    /// \throws ZORSysException "a spline consists of lines and arcs", "part %1 of the spline does not start
    /// where the one before ends"
    static ZORNestResultSegment CreateSpline(const QList<ZORNestResultSegment>& parts);
    /// A text of height 10, width 1, angle 0 and tilt angle 0 in the default font, with the left end of its
    /// baseline at \a start.
    /// \param end  where the source says that the text ends; not used for drawing
    static ZORNestResultSegment CreateText(const ZORMathPoint& start, const ZORMathPoint& end,
                                           const QString& text);
    /// A segment of a type that is none of SegmentType; the four types with data of their own throw
    /// ZORSysException "a segment of type %1 needs more than two points".
    static ZORNestResultSegment CreateOther(SegmentType type, const ZORMathPoint& start,
                                            const ZORMathPoint& end);

    /// Of a whole segment (\a sub -1) or of a part of a spline, 0 up to GetNumSplineGeometry() - 1. Every other
    /// number throws ZORSysException "the segment has no part %1".
    SegmentType GetType(int sub = -1) const;
    ZORMathPoint GetStartPoint(int sub = -1) const;
    ZORMathPoint GetEndPoint(int sub = -1) const;
    /// The origin for what is no arc.
    ZORMathPoint GetArcCenter(int sub = -1) const;
    /// The circle through the start of an arc; of radius 0 for what is no arc.
    ZORMathCircle GetArcCircle(int sub = -1) const;

    /// Points along the segment, its ends included; those of a text are its start and end.
    /// \param tolerance  largest distance from arcs, at least 1e-6; an arc has no more than 16384 points a turn
    ZORMathSetOfPoints GetPoints(double tolerance) const;

    /// Number of lines and arcs of a spline; 0 for every other segment.
    int GetNumSplineGeometry() const;
    /// The ends of the lines and arcs of a spline: the start, then the end of each.
    ZORMathSetOfPoints GetSplinePoints() const;
    /// The types of the lines and arcs of a spline.
    QList<SegmentType> GetSplineLineTypes() const;

    /// The rest belongs to texts: setters throw ZORSysException "the segment is no text" for every other
    /// segment, getters give 0 and empty values.
    QString GetText() const;
    TextJustification GetTextJustification() const;
    /// \param justification  other numbers than those of the enumeration are kept, and drawn as BaselineLeft
    void SetTextJustification(TextJustification justification);
    /// Height of the capital letters.
    double GetTextHeight() const;
    void SetTextHeight(double height);
    /// Direction of the baseline.
    double GetTextAngle() const;
    void SetTextAngle(double angle);
    /// Width of the letters, in parts of their natural width.
    double GetTextWidth() const;
    void SetTextWidth(double width);
    /// Slant of the letters, positive to the right.
    double GetTextTiltAngle() const;
    void SetTextTiltAngle(double angle);
    /// Name of the font as the source has it.
    QByteArray GetFont() const;
    void SetFont(const QByteArray& font);

    /// Invalid (as at first) for the colour of the layer.
    QColor GetColor() const { return m_color; }
    /// Keeps red, green, blue and opacity with 8 bits each.
    void SetColor(const QColor& color);
    Layer GetLayer() const { return m_layer; }
    void SetLayer(Layer layer);
    /// A code of ZORVisOptions::LineStyle; other numbers are kept, and drawn as solid lines.
    int GetLineStyle() const { return m_lineStyle; }
    void SetLineStyle(int lineStyle);

    /// Same type, numbers, text and look.
    friend ZORNESTING_EXPORT bool operator==(const ZORNestResultSegment& a, const ZORNestResultSegment& b);
    /// (type, start, end)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestResultSegment& segment);

private:
    ZORNestResultSegment(SegmentType type, const ZORMathPoint& start, const ZORMathPoint& end);
    ZORNestResultSegmentData& ChangeText();

    ZORMathPoint m_start;
    ZORMathPoint m_end;
    ZORMathPoint m_center; // of arcs
    QColor m_color;
    SegmentType m_type = Line;
    Layer m_layer = Automatic;
    int m_lineStyle = 0;
    QSharedDataPointer<ZORNestResultSegmentData> d; // of splines and texts
};
