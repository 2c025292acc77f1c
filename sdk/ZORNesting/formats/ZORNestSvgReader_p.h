// Reads SVG files.

#pragma once

#include "drawing/ZORNestDrawing_p.h"

#include <QCoreApplication>
#include <QStringList>
#include <QXmlStreamReader>

#include <optional>

class ZORWorkContext;

/// Draws the paths and basic shapes of an SVG file, in millimeters and with y upwards.
///
/// path, rect, circle, ellipse, line, polyline and polygon in groups with any transformations. Lengths come
/// from width and height with the viewBox; where those say nothing, a unit is 1/96 inch. Texts, images,
/// nested drawings and copies (use) are left out and counted; what is not shown (defs, clip paths, display
/// "none" ...) does not count. A layer is the label, else the id, of the innermost group that has one; the
/// colour is that of the stroke, else that of the fill.
class ZORNestSvgReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestSvgReader)

public:
    ZORNestSvgReader(const QByteArray& bytes, ZORNestDrawing& drawing, QStringList& report,
                     const ZORWorkContext& context);

    /// \throws ZORSysException "no SVG file: the root element is '%1'", "line %1: ..."; see ZORNestXml
    void Read();

private:
    struct State
    {
        ZORNestPlaneMap map;
        ZORNestLook look;
        QColor fill;
    };

    void ReadRoot(State& state);
    void ReadElements(const State& root);
    /// Draws a shape, or returns the state of a group whose elements follow.
    std::optional<State> ReadElement(const State& parent);
    void ApplyAttributes(State& state);
    void DrawShape(QStringView name, const State& state);
    void DrawRectangle(const State& state, const ZORNestLook& look);
    void DrawPoints(const State& state, const ZORNestLook& look, bool isClosed);
    /// In units of the drawing; 0 when the attribute is absent.
    double GetLength(const char* attribute) const;

    QXmlStreamReader m_xml;
    ZORNestDrawing& m_drawing;
    QStringList& m_report;
    const ZORWorkContext& m_context;
    QXmlStreamAttributes m_attributes; // of the current element
};
