#include "ZORCompShape_p.h"

#include <ZORFeature/ZORFeatGeometry.h>

#include <memory>

namespace {

void Rename(const QPointer<ZORGeoGeometry>& geometry, const QString& name)
{
    if (geometry && !name.isEmpty())
        geometry->setObjectName(name);
}

} // namespace

ZORCompShape::ZORCompShape(ZORFeatGeometry* owner)
    : m_owner(owner)
{
}

ZORCompShape::~ZORCompShape()
{
    Destroy();
}

bool ZORCompShape::Replace(const ZORGeoCurve* curve, bool isOwned)
{
    std::unique_ptr<ZORTopBody> body;
    if (curve) {
        body = std::make_unique<ZORTopBody>(m_owner->GetContainer(), curve);
        body->AddReference(m_owner);
    }
    const QPointer<ZORFeatGeometry> owner = m_owner;
    QPointer<ZORGeoCurve> oldCurve = m_curve;
    QPointer<ZORTopBody> oldBody = m_body;
    m_curve = isOwned ? const_cast<ZORGeoCurve*>(curve) : nullptr;
    m_body = body.release();
    const bool isRegistered = m_owner->IsInitialized();
    if (isRegistered)
        Register();

    // Receivers of the container's signals find none of the old in the feature any more.
    const QString curveName = oldCurve ? oldCurve->objectName() : QString();
    const QString bodyName = oldBody ? oldBody->objectName() : QString();
    delete oldBody;
    delete oldCurve;
    if (!owner)
        return false;
    if (isRegistered) {
        Rename(m_curve.data(), curveName);
        Rename(m_body.data(), bodyName);
    }
    return true;
}

void ZORCompShape::Adopt(ZORGeoCurve* ownedCurve, ZORTopBody* body)
{
    m_curve = ownedCurve;
    m_body = body;
    if (body)
        body->AddReference(m_owner);
}

bool ZORCompShape::Register()
{
    const QPointer<ZORFeatGeometry> owner = m_owner;
    const QPointer<ZORTopBody> body = m_body;
    if (m_curve)
        m_curve->Initialize();
    if (body)
        body->Initialize();
    return owner;
}

void ZORCompShape::Destroy()
{
    // The feature's reference of the body goes with the body.
    ZORTopBody* const body = m_body;
    m_body.clear();
    delete body;
    ZORGeoCurve* const curve = m_curve;
    m_curve.clear();
    delete curve;
}
