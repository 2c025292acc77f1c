// Primitives and representations on their way into pictures.

#pragma once

#include "ZORVisPrimitiveData_p.h"

#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisRep.h>

#include <QColor>

#include <memory>
#include <vector>

class QObject;
class ZORVisVirtualObject;

/// Primitives with their common options.
struct ZORVisRepItem
{
    ZORVisOptions options;
    std::vector<std::shared_ptr<const ZORVisPrimitiveData>> primitives;
};

/// One thing to draw: what, and for whom it is drawn.
struct ZORVisDrawObject
{
    /// \param rep       may be null
    /// \param drawnFor  null in pictures without environment and for drawings of a scene
    ZORVisDrawObject(const ZORVisRep* rep, ZORVisVirtualObject* drawnFor);

    /// Makes the items look highlighted; an invalid color makes them look as usual.
    void SetHighlight(const QColor& color, double mixing);

    ZORVisRep::Items items; // as they are to be drawn
    ZORMathBoundingBox box;
    ZORVisVirtualObject* object;  // not owned
    QObject* owner = nullptr;     // not owned; of a drawing of the scene
    const QObject* key = nullptr; // for comparison only: what the object or drawing stands for
    bool isHidden = false;
    qint64 size = 0; // triangles and line segments

private:
    ZORVisRep::Items m_usualItems;
};

/// The primitives of one kind of an item, in drawing order.
template<class Data, ZORVisPrimitiveKind kind, class Function>
void ZORVisForEach(const ZORVisRepItem& item, Function function)
{
    for (const auto& primitive : item.primitives) {
        if (primitive->kind == kind)
            function(static_cast<const Data&>(*primitive));
    }
}
