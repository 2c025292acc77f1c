// The drawing of one object: what it shows, and how.

#pragma once

#include <ZORFeature/ZORFeatSketch.h>
#include <ZORFeature/ZORFeatStyle.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>

#include <memory>

/// The representations of an object, one for each set of options. Made in the thread of the object, completed in any,
/// then constant.
class ZORFeatDrawing
{
public:
    /// O(points of curves); surfaces share their arrays.
    explicit ZORFeatDrawing(const ZORFeatSketch& sketch);

    /// Whether completing takes long enough to be noticed.
    bool IsLarge() const { return m_size > kLargeSize; }
    /// Makes surfaces and the further lines of the sketch, and for large drawings what pictures need.
    void Complete();

    /// Returns the whole in a style. O(number of representations): the primitives are shared.
    std::unique_ptr<ZORVisRep> MakeRep(const ZORFeatStyle& style) const;

private:
    using Part = std::unique_ptr<ZORVisRepGraphics>;

    static constexpr qint64 kLargeSize = 20'000; // triangles and points

    const ZORFeatKind m_kind;
    std::function<QList<ZORMathSetOfPoints>()> m_makeLines;
    QList<std::function<std::unique_ptr<ZORVisSurfacePrimitive>()>> m_makeSurfaces;
    qint64 m_size = 0;
    // Null where there is none.
    Part m_surfaces;
    Part m_curves;
    Part m_points;
    Part m_net; // lines on surfaces
};
