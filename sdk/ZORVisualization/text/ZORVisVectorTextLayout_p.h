// Layout of vector texts.

#pragma once

#include "ZORVisVectorTextData_p.h"

#include <QStringView>

#include <vector>

struct ZORVisStrokeGlyph;

/// Places the characters of a text and collects their strokes.
///
/// Works on two coordinates: "along" a line, from its begin, and "across" the lines. A character's place is
/// the left end of its baseline, x to the right and y upwards from the left end of the first baseline.
class ZORVisVectorTextLayout
{
public:
    /// \param data  must outlive the layout
    explicit ZORVisVectorTextLayout(const ZORVisVectorTextData& data);

    QList<ZORMathSetOfPoints> CreatePolylines();

private:
    struct Line
    {
        QStringView text;
        double length = 0;
        double width = 0;           // of its widest character
        qsizetype stretchBegin = 0; // place in the text behind the last tab
        int numStretched = 0;       // blanks from there on
        double begin = 0;           // along
        double stretch = 0;         // added to each of the blanks
    };
    struct Cell
    {
        const ZORVisStrokeGlyph* glyph; // not owned
        bool isBlank;
        double width;
    };

    void SplitLines();
    void Measure(Line& line) const;
    void Justify();
    void PlaceOrigin();
    template<class Visit>
    double Walk(const Line& line, Visit&& visit) const;
    Cell GetCell(char32_t character) const;
    double GetNextTab(double along) const;

    void AddLine(const Line& line, double across);
    void AddGlyph(const ZORVisStrokeGlyph& glyph, double x, double y);
    void AddDecorations(double x, double y, double length);
    void AddPolyline(ZORMathSetOfPoints&& points);
    ZORMathPoint Evaluate(double x, double y, double height) const;

    const ZORVisVectorTextData& m_data;
    const bool m_isVertical;
    const double m_unit;  // millimetres of a font unit
    const double m_pitch; // of the lines
    const double m_slope; // of the tilt
    std::vector<Line> m_lines;
    double m_length = 0;  // of the longest line
    double m_originX = 0; // where the anchor lies
    double m_originY = 0;
    QList<ZORMathSetOfPoints> m_polylines;
};
