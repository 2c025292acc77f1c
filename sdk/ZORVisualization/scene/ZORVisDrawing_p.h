// Primitives and representations on their way into pictures.

#pragma once

#include "ZORVisPrimitiveData_p.h"

#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisRep.h>

#include <memory>
#include <vector>

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
    /// \param drawnFor  null in pictures without environment
    ZORVisDrawObject(const ZORVisRep* rep, ZORVisVirtualObject* drawnFor);

    ZORVisRep::Items items;
    ZORMathBoundingBox box;
    ZORVisVirtualObject* object; // not owned
    qint64 size = 0;             // triangles and line segments
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
