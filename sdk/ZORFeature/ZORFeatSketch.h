// What an object is drawn from.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <QList>

#include <functional>

/// What an object is to whoever looks at it: filters and usual styles go by kind.
enum class ZORFeatKind {
    None, ///< nothing to see, such as a folder or a material
    Point,
    Curve,
    Surface,
    Layer, ///< a draped surface with its net
    Course,
};

/// The geometry by which an object is shown.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORFEATURE_EXPORT ZORFeatSketch
{
    ZORFeatKind kind = ZORFeatKind::None;
    /// Points, curves and surfaces; not owned.
    QList<const ZORGeoGeometry*> geometry;
    /// Further lines on the geometry, each through its points, such as the yarns of a net; null: none. Holds all values
    /// that it needs, so that any thread may call it at any time.
    std::function<QList<ZORMathSetOfPoints>()> makeLines;
    /// Number of points of those lines, about.
    qint64 numLinePoints = 0;

    /// Returns the sketch of an object. Features show what they own (ZORFeatGeometry::GetOwnedGeometry()), any other
    /// geometry shows itself. Bodies show nothing: what they are made of does.
    /// \param object  null gives the empty sketch
    static ZORFeatSketch Of(const ZORGeoGeometry* object);
    /// Returns the kind of an object: of features that of their shape, of bodies that of what they are made of.
    static ZORFeatKind KindOf(const ZORGeoGeometry* object);
};

/// How the features of a class are sketched, where they show more than their geometry.
/// Thread safety: thread-safe.
struct ZORFEATURE_EXPORT ZORFeatSketcher
{
    const QMetaObject* type;
    ZORFeatKind kind;
    void (*complete)(const ZORGeoGeometry& object, ZORFeatSketch& sketch); // null: nothing to add
};

/// Keeps a sketcher known while it lives: from the load of the library that holds it to its unload.
/// Thread safety: reentrant; one thread at a time per object.
class ZORFEATURE_EXPORT ZORFeatSketcherRegistration
{
public:
    explicit ZORFeatSketcherRegistration(const ZORFeatSketcher& sketcher);
    ~ZORFeatSketcherRegistration();
    Q_DISABLE_COPY_MOVE(ZORFeatSketcherRegistration)

private:
    const ZORFeatSketcher m_sketcher;
};
