#include "ZORFeatShape.h"

#include <ZORTopology/ZORTopBody.h>

#include <QString>

#include <utility>

namespace {

// What a new geometry gets from the one whose place it takes.
struct Heritage
{
    QPointer<ZORGeoGeometry> heir;
    QString name;
};

void AppendHeritage(QList<Heritage>& all, const ZORGeoGeometry* old, ZORGeoGeometry* heir)
{
    if (old && heir && old->metaObject() == heir->metaObject() && !old->objectName().isEmpty())
        all.append({heir, old->objectName()});
}

} // namespace

ZORFeatShape::ZORFeatShape() = default;

ZORFeatShape::ZORFeatShape(ZORTopBody* body, const QList<ZORGeoGeometry*>& geometry)
    : m_body(body)
    , m_geometry(geometry.begin(), geometry.end())
{
}

ZORFeatShape::ZORFeatShape(ZORFeatShape&& other) noexcept
{
    m_body.swap(other.m_body);
    m_geometry.swap(other.m_geometry);
}

ZORFeatShape& ZORFeatShape::operator=(ZORFeatShape&& other) noexcept
{
    m_body.swap(other.m_body);
    m_geometry.swap(other.m_geometry);
    return *this;
}

ZORFeatShape::~ZORFeatShape()
{
    Destroy();
}

ZORTopBody* ZORFeatShape::GetBody() const
{
    return m_body;
}

QList<ZORGeoGeometry*> ZORFeatShape::GetGeometry() const
{
    QList<ZORGeoGeometry*> left;
    for (const QPointer<ZORGeoGeometry>& geometry : m_geometry) {
        if (geometry)
            left.append(geometry);
    }
    return left;
}

void ZORFeatShape::Initialize()
{
    const QList<QPointer<ZORGeoGeometry>> all = m_geometry;
    for (const QPointer<ZORGeoGeometry>& geometry : all) {
        if (geometry)
            geometry->Initialize();
    }
    if (m_body)
        m_body->Initialize();
}

void ZORFeatShape::Destroy()
{
    ZORTopBody* const body = m_body;
    m_body.clear();
    delete body;
    const QList<QPointer<ZORGeoGeometry>> all = std::exchange(m_geometry, {});
    for (const QPointer<ZORGeoGeometry>& geometry : all)
        delete geometry.data();
}

void ZORFeatShape::HandOver(const ZORFeatShape& successor)
{
    QList<Heritage> heritage;
    AppendHeritage(heritage, m_body, successor.m_body);
    const qsizetype count = qMin(m_geometry.size(), successor.m_geometry.size());
    for (qsizetype i = 0; i < count; ++i)
        AppendHeritage(heritage, m_geometry[i], successor.m_geometry[i]);
    Destroy();
    for (const Heritage& part : std::as_const(heritage)) {
        if (part.heir)
            part.heir->setObjectName(part.name);
    }
}
