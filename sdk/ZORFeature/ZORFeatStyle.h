// How an object of a document looks.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>
#include <ZORVisualization/ZORVisOptions.h>

#include <QByteArray>
#include <QColor>
#include <QSharedDataPointer>

class QCborMap;
class ZORFeatStyleData;

/// Whether and how an object is shown. What cannot be drawn as it is (an opacity outside of 0 ... 1, a width that is
/// not a number) becomes the nearest value that can, or stays as it was.
///
/// A value: copies share their data until one of them is changed, O(1). One that was moved from may only be assigned or
/// destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatStyle
{
public:
    using PointSymbol = ZORVisOptions::PointSymbol;
    using Display = ZORVisOptions::Display;

    static constexpr double kMinimumLineWidth = 1;
    static constexpr double kMaximumLineWidth = 32;

    /// Visible, opaque gray, lines of width 1, crosses, shaded.
    ZORFeatStyle();
    ZORFeatStyle(const ZORFeatStyle& other);
    ZORFeatStyle(ZORFeatStyle&& other) noexcept;
    ZORFeatStyle& operator=(const ZORFeatStyle& other);
    ZORFeatStyle& operator=(ZORFeatStyle&& other) noexcept;
    ~ZORFeatStyle();
    void swap(ZORFeatStyle& other) noexcept { d.swap(other.d); }

    void SetVisible(bool isVisible);
    bool IsVisible() const;
    /// \param color  its alpha is ignored; an invalid one changes nothing
    void SetColor(const QColor& color);
    QColor GetColor() const;
    /// \param opacity  0 (invisible) ... 1 (opaque), clamped; NaN changes nothing
    void SetOpacity(double opacity);
    double GetOpacity() const;
    /// \param width  device independent pixels, clamped to what is drawn; NaN changes nothing
    void SetLineWidth(double width);
    double GetLineWidth() const;
    /// \param symbol  codes out of range change nothing
    void SetPointSymbol(PointSymbol symbol);
    PointSymbol GetPointSymbol() const;
    /// \param display  codes out of range change nothing
    void SetDisplay(Display display);
    Display GetDisplay() const;

    /// Returns the options by which representations of this style are drawn.
    ZORVisOptions GetOptions() const;

    /// Returns the values in which this style differs from \a usual, as container files keep them; empty where the
    /// styles are equal.
    QCborMap ToStored(const ZORFeatStyle& usual) const;
    /// Returns \a usual with the values of a container file. Unknown keys, and values that are not of the kind of their
    /// key, are left out.
    static ZORFeatStyle FromStored(const QCborMap& values, const ZORFeatStyle& usual);

    friend ZORFEATURE_EXPORT bool operator==(const ZORFeatStyle& a, const ZORFeatStyle& b);
    /// (visible, color as #rrggbb, opacity, line width, symbol, display)
    friend ZORFEATURE_EXPORT void ZorTraceAppend(QByteArray& out, const ZORFeatStyle& style);

private:
    QSharedDataPointer<ZORFeatStyleData> d;
};

Q_DECLARE_SHARED(ZORFeatStyle)
