#include "ZORWFProjection.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORTopology/ZORTopFactory.h>

ZOR_GEO_REGISTER_TYPE(ZORWFProjection)

namespace {

bool HasShape(const ZORFeatGeometry* feature)
{
    const ZORTopBody* const body = feature ? feature->GetBody() : nullptr;
    return body && !body->GetGeometries().isEmpty();
}

} // namespace

class ZORWFProjection::Private
{
public:
    ZORGeoReference<ZORFeatGeometry> source;
    ZORGeoReference<ZORFeatGeometry> support;
};

ZORWFProjection::ZORWFProjection(ZORFeatObject* folder)
    : ZORFeatComputedGeometry(folder)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(folder);
}

ZORWFProjection::~ZORWFProjection() = default;

QList<ZORFeatObject*> ZORWFProjection::GetInputs() const
{
    QList<ZORFeatObject*> features{GetSource(), GetSupport()};
    features.removeAll(nullptr);
    return features;
}

void ZORWFProjection::SetSource(ZORFeatGeometry* source)
{
    ZOR_TRACE_CALL(source);
    SetInput(d->source, source);
}

void ZORWFProjection::SetSupport(ZORFeatGeometry* support)
{
    ZOR_TRACE_CALL(support);
    SetInput(d->support, support);
}

ZORFeatGeometry* ZORWFProjection::GetSource() const
{
    return d->source;
}

ZORFeatGeometry* ZORWFProjection::GetSupport() const
{
    return d->support;
}

bool ZORWFProjection::IsComplete() const
{
    return HasShape(d->source) && HasShape(d->support);
}

ZORFeatShape ZORWFProjection::Compute() const
{
    const ZORTopBody* const support = d->support->GetBody();
    const ZORTopBody* const source = d->source->GetBody();
    if (!qobject_cast<const ZORGeoSurface*>(support->GetGeometry()))
        throw ZORSysException(tr("the support is no surface"));
    if (source->GetDimension() > 1)
        throw ZORSysException(tr("the source is neither a point nor a curve"));
    ZORTopBody* const body = ZORTopFactory(GetContainer()).Project(support, source);
    if (!body)
        throw ZORSysException(tr("nothing of the source can be projected onto the support"));
    QList<ZORGeoGeometry*> geometry;
    for (const ZORGeoGeometry* part : body->GetGeometries())
        geometry.append(const_cast<ZORGeoGeometry*>(part)); // made for this body alone
    return {body, geometry};
}

struct ZORWFProjectionStorage
{
    static void Write(const ZORWFProjection& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("source", feature.GetSource());
        writer.WriteLink("support", feature.GetSupport());
    }
    static ZORWFProjection* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFProjection(reader.GetReference<ZORFeatObject>("parent"));
    }
    static void Complete(ZORWFProjection& feature, const ZORGeoObjectReader& reader)
    {
        feature.SetSource(reader.GetLink<ZORFeatGeometry>("source"));
        feature.SetSupport(reader.GetLink<ZORFeatGeometry>("support"));
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFProjection)
