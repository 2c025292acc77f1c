#include "ZORCompShape_p.h"

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORTopology/ZORTopBody.h>

#include <memory>
#include <utility>

namespace {

void Follow(ZORFeatGeometry* owner, const ZORTopBody* body)
{
    QObject::connect(body, &ZORGeoGeometry::ShapeChanged, owner, &ZORFeatGeometry::BodyChanged);
}

ZORFeatShape MakeShape(ZORTopBody* body, ZORGeoCurve* ownedCurve)
{
    return {body, ownedCurve ? QList<ZORGeoGeometry*>{ownedCurve} : QList<ZORGeoGeometry*>()};
}

} // namespace

ZORCompShape::ZORCompShape(ZORFeatGeometry* owner)
    : m_owner(owner)
{
}

ZORCompShape::~ZORCompShape() = default;

bool ZORCompShape::Replace(const ZORGeoCurve* curve, Ownership ownership)
{
    std::unique_ptr<ZORTopBody> body;
    if (curve) {
        body = std::make_unique<ZORTopBody>(m_owner->GetContainer(), curve);
        body->AddReference(m_owner);
        Follow(m_owner, body.get());
    }
    const bool isOwned = ownership == Ownership::Taken;
    ZORFeatShape shape = MakeShape(body.release(), isOwned ? const_cast<ZORGeoCurve*>(curve) : nullptr);
    const QPointer<ZORFeatGeometry> owner = m_owner;
    if (m_owner->IsInitialized())
        shape.Initialize();
    if (!owner)
        return false;
    ZORFeatShape former = std::exchange(m_shape, std::move(shape));
    m_isAdopted = false;
    former.HandOver(m_shape);
    return owner;
}

void ZORCompShape::Adopt(ZORGeoCurve* ownedCurve, ZORTopBody* body)
{
    m_shape = MakeShape(body, ownedCurve);
    m_isAdopted = true;
    if (body) {
        body->AddReference(m_owner);
        Follow(m_owner, body);
    }
}

bool ZORCompShape::Register()
{
    const QPointer<ZORFeatGeometry> owner = m_owner;
    if (!m_isAdopted)
        m_shape.Initialize();
    return owner;
}

ZORGeoCurve* ZORCompShape::GetOwnedCurve() const
{
    return qobject_cast<ZORGeoCurve*>(m_shape.GetGeometry().value(0));
}
