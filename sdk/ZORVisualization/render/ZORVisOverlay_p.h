// Point symbols, texts and the axis triad of a picture.

#pragma once

#include "ZORVisMarkers_p.h"
#include "scene/ZORVisFrame_p.h"

#include <QImage>
#include <QRect>

#include <vector>

class QPainter;
struct ZORVisTextData;

/// Draws what keeps its shape on the screen with QPainter, over the surfaces and lines. A symbol or text is
/// hidden as a whole where something covers its point: it is never cut by a surface that it marks.
class ZORVisOverlay
{
public:
    /// \param markers  not owned; keeps the pictures of the symbols from one picture to the next
    ZORVisOverlay(const ZORVisFrame& frame, const ZORVisDrawList& objects, ZORVisMarkers* markers);

    bool IsEmpty() const { return m_elements.empty(); }
    /// Hides the elements in a tile of the picture that are covered.
    /// \param depth  of the tile's pixels, row by row from the top
    void Hide(const QRect& tile, const std::vector<float>& depth);
    void Paint(QImage& picture);

private:
    struct Element
    {
        QPointF pixel;
        double depth = 0;
        bool visible = true;
        const ZORVisOptions* options = nullptr; // not owned
        const ZORVisTextData* text = nullptr;   // not owned; null for a symbol
    };
    void Collect(const ZORVisRepItem& item);
    void AddElement(const ZORMathPoint& point, double margin, const ZORVisOptions& options,
                    const ZORVisTextData* text);
    double GetTextHeight(const ZORVisOptions& options, const ZORVisTextData& text) const;
    void PaintElements(QPainter& painter, const QRect& part);
    void PaintText(QPainter& painter, const Element& element) const;
    void PaintTriad(QPainter& painter) const;

    const ZORVisFrame& m_frame;
    ZORVisMarkers* const m_markers; // not owned
    std::vector<Element> m_elements;
};
