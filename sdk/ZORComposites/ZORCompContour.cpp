#include "ZORCompContour.h"

#include "features/ZORCompShape_p.h"
#include "features/ZORCompStoredAttributes_p.h"

#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORTopology/ZORTopBody.h>

ZOR_GEO_REGISTER_TYPE(ZORCompContour)

class ZORCompContour::Private
{
public:
    explicit Private(ZORCompContour* contour)
        : shape(contour)
    {
    }

    ZORCompShape shape;
};

ZORCompContour::ZORCompContour(ZORFeatObject* parent, const ZORMathSetOfPoints& points)
    : ZORFeatGeometry(parent)
    , d(std::make_unique<Private>(this))
{
    ZOR_TRACE_CALL(parent, points);
    auto curve = std::make_unique<ZORGeoPolyline>(GetContainer(), points, true);
    d->shape.Replace(curve.release(), ZORCompShape::Ownership::Taken);
}

ZORCompContour::ZORCompContour(ZORFeatObject* parent, ZORGeoPolyline* curve, ZORTopBody* body)
    : ZORFeatGeometry(parent)
    , d(std::make_unique<Private>(this))
{
    d->shape.Adopt(curve, body);
}

ZORCompContour::~ZORCompContour() = default;

void ZORCompContour::Initialize()
{
    ZOR_TRACE_CALL();
    if (d->shape.Register())
        ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORCompContour::GetBody() const
{
    return d->shape.GetBody();
}

QList<ZORGeoGeometry*> ZORCompContour::GetOwnedGeometry() const
{
    QList<ZORGeoGeometry*> owned = ZORFeatGeometry::GetOwnedGeometry();
    if (d->shape.GetOwnedCurve())
        owned.prepend(d->shape.GetOwnedCurve());
    return owned;
}

ZORGeoCurve* ZORCompContour::GetCurve() const
{
    return d->shape.GetOwnedCurve();
}

struct ZORCompContourStorage
{
    static void Write(const ZORCompContour& contour, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("curve", contour.GetCurve());
        writer.WriteReference("body", contour.GetBody());
        ZorCompWriteAttributes(contour, writer);
    }
    static ZORCompContour* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORCompContour(reader.GetReference<ZORFeatObject>("parent"),
                                  reader.GetReference<ZORGeoPolyline>("curve"),
                                  reader.GetReference<ZORTopBody>("body"));
    }
    static void Complete(ZORCompContour& contour, const ZORGeoObjectReader& reader)
    {
        ZorCompReadAttributes(contour, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompContour)
