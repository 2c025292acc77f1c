// Drawings that algorithms leave behind for their developers.

#pragma once

#include <ZORDebug/ZORDebugGlobal.h>

#include <QString>
#include <QtGlobal>

#include <memory>

class ZORDebugVizObject;
class ZORMathPoint;
class ZORMathSetOfPoints;

/// Collects points, lines, polylines, triangles and labels until somebody asks to see them.
///
/// Adding never fails and never draws by itself: what cannot be drawn (points that are not finite, too few
/// points) leaves an object without representation, or an object of the rest.
///
/// Parameters in common:
///   r, g, b      colour, 0 ... 255 each; larger values count as 255
///   style        line style, code of ZORVisOptions::LineStyle; any other code draws a solid line
///   label        text drawn beside the object in its colour; empty for none
///   labelAnchor  the place of the text's box that lies at the labelled point, code of
///                ZORVisTextPrimitive::AnchorLocation
/// All coordinates are millimetres.
///
/// Thread safety: main thread only.
class ZORDEBUG_EXPORT ZORDebugVizContainer
{
public:
    static ZORDebugVizContainer* GetContainer();

    int GetNumObjects() const;
    /// \param index  0 ... GetNumObjects() - 1, in the order of the calls
    /// \return owned by the container; null for another index
    ZORDebugVizObject* GetObject(int index) const;
    /// Deletes all objects. Representation sets that were made of theirs stay as they are.
    void RemoveAllObjects();

    /// \param symbol  code of ZORVisOptions::PointSymbol; any other code draws a cross
    static void AddPoint(const ZORMathPoint& point, unsigned r, unsigned g, unsigned b, int symbol,
                         const QString& label, int labelAnchor);
    /// \param lineAnchor  the point of the line that is labelled: 0 start, 1 middle, else end
    static void AddLine(const ZORMathPoint& start, const ZORMathPoint& end, unsigned r, unsigned g,
                        unsigned b, int style, const QString& label, int labelAnchor, int lineAnchor);
    /// \param points  a chain needs two of them; the first finite one is labelled
    /// \param type    1: every two points are a separate line; else every point is joined to the next
    static void AddPolyline(const ZORMathSetOfPoints& points, unsigned r, unsigned g, unsigned b, int style,
                            const QString& label, int type);
    /// One filled triangle; the middle is labelled.
    static void AddTriangle(const ZORMathPoint& first, const ZORMathPoint& second, const ZORMathPoint& third,
                            unsigned r, unsigned g, unsigned b, const QString& label, int labelAnchor);
    /// \param points  every three of them are a filled triangle; the first finite one is labelled
    static void AddTriangles(const ZORMathSetOfPoints& points, unsigned r, unsigned g, unsigned b,
                             const QString& label);
    /// A text alone.
    static void AddLabel(const ZORMathPoint& point, unsigned r, unsigned g, unsigned b, const QString& label,
                         int labelAnchor);

private:
    ZORDebugVizContainer();
    ~ZORDebugVizContainer();
    Q_DISABLE_COPY_MOVE(ZORDebugVizContainer)

    class Drawing;
    class Private;
    const std::unique_ptr<Private> d;
};
