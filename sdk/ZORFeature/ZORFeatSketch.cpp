#include "ZORFeatSketch.h"

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <vector>

namespace {

struct Registry
{
    std::mutex mutex;
    std::vector<const ZORFeatSketcher*> sketchers;

    static Registry& Get()
    {
        static Registry registry;
        return registry;
    }
};

std::optional<ZORFeatSketcher> FindSketcher(const ZORGeoGeometry& object)
{
    Registry& registry = Registry::Get();
    const std::lock_guard lock(registry.mutex);
    for (const QMetaObject* type = object.metaObject(); type; type = type->superClass()) {
        for (const ZORFeatSketcher* sketcher : registry.sketchers) {
            if (sketcher->type == type)
                return *sketcher;
        }
    }
    return std::nullopt;
}

ZORFeatKind KindOfShape(const ZORGeoGeometry* geometry)
{
    if (qobject_cast<const ZORGeoSurface*>(geometry))
        return ZORFeatKind::Surface;
    if (qobject_cast<const ZORGeoCurve*>(geometry))
        return ZORFeatKind::Curve;
    return qobject_cast<const ZORGeoPoint*>(geometry) ? ZORFeatKind::Point : ZORFeatKind::None;
}

ZORFeatKind KindOfBody(const ZORTopBody* body)
{
    const QList<const ZORGeoGeometry*> geometries =
        body ? body->GetGeometries() : QList<const ZORGeoGeometry*>();
    return geometries.isEmpty() ? ZORFeatKind::None : KindOfShape(geometries.first());
}

} // namespace

ZORFeatKind ZORFeatSketch::KindOf(const ZORGeoGeometry* object)
{
    if (const auto* const body = qobject_cast<const ZORTopBody*>(object))
        return KindOfBody(body);
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
    if (!feature)
        return KindOfShape(object);
    const std::optional<ZORFeatSketcher> sketcher = FindSketcher(*feature);
    return sketcher ? sketcher->kind : KindOfBody(feature->GetBody());
}

ZORFeatSketch ZORFeatSketch::Of(const ZORGeoGeometry* object)
{
    ZORFeatSketch sketch;
    sketch.kind = KindOf(object);
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
    if (!feature) {
        if (KindOfShape(object) != ZORFeatKind::None)
            sketch.geometry.append(object);
        return sketch;
    }
    const QList<ZORGeoGeometry*> own = feature->GetOwnedGeometry();
    for (const ZORGeoGeometry* geometry : own) {
        if (KindOfShape(geometry) != ZORFeatKind::None)
            sketch.geometry.append(geometry);
    }
    if (const auto sketcher = FindSketcher(*feature); sketcher && sketcher->complete)
        sketcher->complete(*feature, sketch);
    return sketch;
}

ZORFeatSketcherRegistration::ZORFeatSketcherRegistration(const ZORFeatSketcher& sketcher)
    : m_sketcher(sketcher)
{
    Registry& registry = Registry::Get();
    const std::lock_guard lock(registry.mutex);
    registry.sketchers.push_back(&m_sketcher);
}

ZORFeatSketcherRegistration::~ZORFeatSketcherRegistration()
{
    Registry& registry = Registry::Get();
    const std::lock_guard lock(registry.mutex);
    std::erase(registry.sketchers, &m_sketcher);
}
