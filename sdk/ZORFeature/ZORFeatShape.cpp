#include "ZORFeatShape.h"

#include <ZORTopology/ZORTopBody.h>

#include <QPointer>
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

class ZORFeatShape::Private
{
public:
    QPointer<ZORTopBody> body;
    QList<QPointer<ZORGeoGeometry>> geometry;
};

ZORFeatShape::ZORFeatShape()
    : d(std::make_unique<Private>())
{
}

ZORFeatShape::ZORFeatShape(ZORTopBody* body, const QList<ZORGeoGeometry*>& geometry)
    : d(new Private{body, {geometry.begin(), geometry.end()}})
{
}

ZORFeatShape::ZORFeatShape(ZORFeatShape&& other) noexcept
    : ZORFeatShape()
{
    d.swap(other.d);
}

ZORFeatShape& ZORFeatShape::operator=(ZORFeatShape&& other) noexcept
{
    d.swap(other.d);
    return *this;
}

ZORFeatShape::~ZORFeatShape()
{
    Destroy();
}

ZORTopBody* ZORFeatShape::GetBody() const
{
    return d->body;
}

QList<ZORGeoGeometry*> ZORFeatShape::GetGeometry() const
{
    QList<ZORGeoGeometry*> left;
    for (const QPointer<ZORGeoGeometry>& geometry : std::as_const(d->geometry)) {
        if (geometry)
            left.append(geometry);
    }
    return left;
}

void ZORFeatShape::Initialize()
{
    const QList<QPointer<ZORGeoGeometry>> all = d->geometry;
    for (const QPointer<ZORGeoGeometry>& geometry : all) {
        if (geometry)
            geometry->Initialize();
    }
    if (d->body)
        d->body->Initialize();
}

void ZORFeatShape::Destroy()
{
    ZORTopBody* const body = d->body;
    d->body.clear();
    delete body;
    const QList<QPointer<ZORGeoGeometry>> all = std::exchange(d->geometry, {});
    for (const QPointer<ZORGeoGeometry>& geometry : all)
        delete geometry.data();
}

void ZORFeatShape::HandOver(const ZORFeatShape& successor)
{
    QList<Heritage> heritage;
    AppendHeritage(heritage, d->body, successor.d->body);
    const qsizetype count = qMin(d->geometry.size(), successor.d->geometry.size());
    for (qsizetype i = 0; i < count; ++i)
        AppendHeritage(heritage, d->geometry[i], successor.d->geometry[i]);
    Destroy();
    for (const Heritage& part : std::as_const(heritage)) {
        if (part.heir)
            part.heir->setObjectName(part.name);
    }
}
