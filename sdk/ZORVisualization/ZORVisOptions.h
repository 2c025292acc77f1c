// How a representation is drawn: colour, lines, point symbols, text size.

#pragma once

#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QByteArray>
#include <QColor>
#include <QSharedDataPointer>

class ZORVisOptionsData;

/// Display options of one representation. Every combination of values is accepted: what cannot be drawn
/// as it is (an invalid colour, a code out of range) is drawn as the default of its kind.
///
/// A value: copies share their data until one of them is changed, O(1). One that was moved from may only be assigned or
/// destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisOptions
{
public:
    /// Pattern of a line, repeated along every polyline from its first point.
    enum LineStyle : int {
        Solid = 0,
        Dash = 1,
        Dot = 2,
        OneDashOneDot = 3,
        Chain = 4,
        OneDashTwoDot = 5,
        OneDashThreeDot = 6,
        TwoDashTwoDot = 7,
        TwoDashChain = 8,
        TwoDashThreeDot = 9,
        LongDashDot = 10,
        LongDashTwoDot = 11,
        LongDashThreeDot = 12
    };
    /// Marker of a point; its size on the screen does not depend on the zoom.
    enum PointSymbol : int {
        Cross = 0,
        Plus = 1,
        Concentric = 2,
        Coincident = 3,
        FullCircle = 4,
        FullSquare = 5,
        Star = 6,
        NestingDot = 7,
        SmallDot = 8,
        FullCircle2 = 9,
        FullSquare2 = 10
    };
    /// How triangles are drawn.
    enum Display : int {
        Shaded = 0,
        Wireframe = 1, ///< the edges of the triangles only
        WithEdges = 2  ///< shaded, with the edges in a darker color
    };
    static constexpr int kDisplayCount = 3;
    static constexpr int lineStyleCount = 13;
    static constexpr int pointSymbolCount = 11;

    /// Default colour, solid lines of thickness 1, crosses, text size 13, shaded.
    ZORVisOptions();
    ZORVisOptions(const ZORVisOptions& other);
    ZORVisOptions(ZORVisOptions&& other) noexcept;
    ZORVisOptions& operator=(const ZORVisOptions& other);
    ZORVisOptions& operator=(ZORVisOptions&& other) noexcept;
    ~ZORVisOptions();
    void swap(ZORVisOptions& other) noexcept { d.swap(other.d); }

    /// \param color  its alpha is the opacity of surfaces and lines; invalid for the default colour
    void SetColor(const QColor& color);
    QColor GetColor() const;
    /// GetColor(), or the default colour, grey (160, 160, 164), where that is invalid.
    QColor GetDrawnColor() const;

    /// \param thickness  device independent pixels; drawn within 1 ... 32, not a number as 1
    void SetLineThickness(double thickness);
    double GetLineThickness() const;
    /// GetLineThickness() within the limits of what is drawn.
    double GetDrawnThickness() const;

    void SetLineStyle(LineStyle style);
    LineStyle GetLineStyle() const;

    void SetPointSymbol(PointSymbol symbol);
    PointSymbol GetPointSymbol() const;

    /// \param size  height of the font: device independent pixels for texts of fixed size, millimetres for
    ///              scalable texts; drawn as 13 unless positive and finite
    void SetTextSize(double size);
    double GetTextSize() const;
    /// GetTextSize(), or 13 where that cannot be drawn.
    double GetDrawnTextSize() const;

    void SetDisplay(Display display);
    /// Codes out of range are drawn as Shaded.
    Display GetDisplay() const;

    /// Equal values of all options.
    friend ZORVISUALIZATION_EXPORT bool operator==(const ZORVisOptions& a, const ZORVisOptions& b);
    /// (colour as #aarrggbb or none, thickness, style, symbol, text size), and the display where it is not Shaded
    friend ZORVISUALIZATION_EXPORT void ZorTraceAppend(QByteArray& out, const ZORVisOptions& options);

private:
    QSharedDataPointer<ZORVisOptionsData> d;
};

Q_DECLARE_SHARED(ZORVisOptions)
