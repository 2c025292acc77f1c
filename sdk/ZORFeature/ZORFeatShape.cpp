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

// Empty shapes have none.
class ZORFeatShape::Private
{
public:
    QList<Heritage> GetHeritage(const Private& successor) const
    {
        QList<Heritage> heritage;
        AppendHeritage(heritage, body, successor.body);
        const qsizetype count = qMin(geometry.size(), successor.geometry.size());
        for (qsizetype i = 0; i < count; ++i)
            AppendHeritage(heritage, geometry[i], successor.geometry[i]);
        return heritage;
    }

    QPointer<ZORTopBody> body;
    QList<QPointer<ZORGeoGeometry>> geometry;
};

ZORFeatShape::ZORFeatShape() = default;

ZORFeatShape::ZORFeatShape(ZORTopBody* body, const QList<ZORGeoGeometry*>& geometry)
    : d(new Private{body, {geometry.begin(), geometry.end()}})
{
}

ZORFeatShape::ZORFeatShape(ZORFeatShape&& other) noexcept = default;

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
    return d ? d->body.data() : nullptr;
}

QList<ZORGeoGeometry*> ZORFeatShape::GetGeometry() const
{
    QList<ZORGeoGeometry*> left;
    if (!d)
        return left;
    for (const QPointer<ZORGeoGeometry>& geometry : std::as_const(d->geometry)) {
        if (geometry)
            left.append(geometry);
    }
    return left;
}

void ZORFeatShape::Initialize()
{
    if (!d)
        return;
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
    if (!d)
        return;
    ZORTopBody* const body = d->body;
    d->body.clear();
    delete body;
    const QList<QPointer<ZORGeoGeometry>> all = std::exchange(d->geometry, {});
    for (const QPointer<ZORGeoGeometry>& geometry : all)
        delete geometry.data();
}

void ZORFeatShape::HandOver(const ZORFeatShape& successor)
{
    if (!d)
        return;
    QList<Heritage> heritage;
    if (successor.d)
        heritage = d->GetHeritage(*successor.d);
    Destroy();
    for (const Heritage& part : std::as_const(heritage)) {
        if (part.heir)
            part.heir->setObjectName(part.name);
    }
}
