#include "ZORVisRenderer.h"

#include "render/ZORVisGlScene_p.h"
#include "render/ZORVisPicture_p.h"
#include "scene/ZORVisBand_p.h"
#include "scene/ZORVisPicking_p.h"
#include "scene/ZORVisScene_p.h"

#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QHash>
#include <QPointer>

#include <cmath>

namespace {

constexpr qint64 kLargestSmoothScene = 200'000; // triangles and segments
constexpr double kPickTolerance = 5;            // device independent pixels

double Usable(double devicePixelRatio)
{
    return devicePixelRatio > 0 && std::isfinite(devicePixelRatio) ? devicePixelRatio : 1;
}

QObject* OwnerOf(const ZORVisDrawObject& object)
{
    return object.object ? object.object->GetOwner() : object.owner;
}

} // namespace

class ZORVisRenderer::Private
{
public:
    ZORVisFrame CreateFrame(const ZORVisCamera& camera, const QSize& devicePixels, double ratio,
                            const ZORVisDrawList& objects) const;
    static int GetSamples(const ZORVisDrawList& objects);

    QPointer<ZORVisScene> scene;
    DisplayMode mode = Shaded;
    QColor top = Qt::white;
    QColor bottom = Qt::white;
    bool triadVisible = false;
    ZORVisPicture picture;
};

ZORVisFrame ZORVisRenderer::Private::CreateFrame(const ZORVisCamera& camera, const QSize& devicePixels,
                                                 double ratio, const ZORVisDrawList& objects) const
{
    ZORVisFrame frame(camera, devicePixels, ratio, objects);
    frame.wireframe = mode == Wireframe;
    frame.triad = triadVisible;
    frame.top = top.rgb();
    frame.bottom = bottom.rgb();
    frame.samples = GetSamples(objects);
    return frame;
}

// Without hardware, several samples would take three to four times as long: too long to turn a large scene.
int ZORVisRenderer::Private::GetSamples(const ZORVisDrawList& objects)
{
    const ZORVisGraphicsContext* context = ZORVisGraphicsContext::GetInstance();
    qint64 size = 0;
    for (const ZORVisDrawObject* object : objects)
        size += object->size;
    return context->IsSoftware() && size > kLargestSmoothScene ? 1 : context->GetSamples();
}

ZORVisRenderer::ZORVisRenderer()
    : d(std::make_unique<Private>())
{
}

ZORVisRenderer::~ZORVisRenderer() = default;

void ZORVisRenderer::SetScene(ZORVisScene* scene)
{
    d->scene = scene;
}

ZORVisScene* ZORVisRenderer::GetScene() const
{
    return d->scene;
}

void ZORVisRenderer::SetDisplayMode(DisplayMode mode)
{
    d->mode = mode;
}

ZORVisRenderer::DisplayMode ZORVisRenderer::GetDisplayMode() const
{
    return d->mode;
}

void ZORVisRenderer::SetBackground(const QColor& top, const QColor& bottom)
{
    d->top = top.isValid() ? top : QColor(Qt::white);
    d->bottom = bottom.isValid() ? bottom : QColor(Qt::white);
}

void ZORVisRenderer::SetAxisTriadVisible(bool visible)
{
    d->triadVisible = visible;
}

bool ZORVisRenderer::IsAxisTriadVisible() const
{
    return d->triadVisible;
}

QImage ZORVisRenderer::Render(const ZORVisCamera& camera, const QSize& devicePixels, double devicePixelRatio)
{
    if (!ZORVisPicture::IsDrawable(devicePixels))
        return {};
    const double ratio = Usable(devicePixelRatio);
    const ZORVisDrawList objects = d->scene ? d->scene->d->GetDrawList() : ZORVisDrawList();
    const ZORVisFrame frame = d->CreateFrame(camera, devicePixels, ratio, objects);
    ZORVisGlScene* glScene = d->scene ? d->scene->d->PrepareGlScene() : nullptr;
    QImage image = d->picture.Draw(frame, objects, glScene);
    image.setDevicePixelRatio(ratio);
    return image;
}

ZORVisPickResult ZORVisRenderer::Pick(const ZORVisCamera& camera, const QSize& devicePixels,
                                      const QPointF& pixel, double devicePixelRatio) const
{
    return Pick(camera, devicePixels, pixel, devicePixelRatio, {});
}

ZORVisPickResult ZORVisRenderer::Pick(const ZORVisCamera& camera, const QSize& devicePixels,
                                      const QPointF& pixel, double devicePixelRatio,
                                      const Accepts& accepts) const
{
    if (!d->scene || devicePixels.isEmpty() || !std::isfinite(pixel.x()) || !std::isfinite(pixel.y()))
        return {};
    const double ratio = Usable(devicePixelRatio);
    const ZORVisDrawList objects = d->scene->d->GetDrawList();
    const ZORVisFrame frame = d->CreateFrame(camera, devicePixels, ratio, objects);
    ZORVisPicking picking(frame, pixel, kPickTolerance * ratio);
    for (const ZORVisDrawObject* object : objects) {
        if (!accepts || accepts(OwnerOf(*object)))
            picking.Add(*object);
    }
    return picking.GetResult();
}

QList<QObject*> ZORVisRenderer::FindIn(const ZORVisCamera& camera, const QSize& devicePixels,
                                       const QRectF& rectangle, Extent extent, const Accepts& accepts) const
{
    const bool isFinite = std::isfinite(rectangle.left()) && std::isfinite(rectangle.right())
                          && std::isfinite(rectangle.top()) && std::isfinite(rectangle.bottom());
    if (!d->scene || devicePixels.isEmpty() || !isFinite)
        return {};
    const ZORVisDrawList objects = d->scene->d->GetDrawList();
    const ZORVisFrame frame = d->CreateFrame(camera, devicePixels, 1, objects);
    const ZORVisBand band(frame, rectangle);
    QList<QObject*> owners;
    QHash<QObject*, bool> isIn; // an owner may have several objects
    for (const ZORVisDrawObject* object : objects) {
        QObject* const owner = OwnerOf(*object);
        const auto known = isIn.constFind(owner);
        // One object decides: one that is touched, or one that is not wholly in.
        if (!owner || (known != isIn.cend() && *known == (extent == Extent::Part)))
            continue;
        if (accepts && !accepts(owner))
            continue;
        if (known == isIn.cend())
            owners.append(owner);
        isIn[owner] = extent == Extent::Whole ? band.HoldsWhole(*object) : band.Touches(*object);
    }
    owners.removeIf([&isIn](QObject* owner) { return !isIn.value(owner); });
    return owners;
}
