#include "ZORVisRenderer.h"

#include "ZORVisScene_p.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>

namespace {

constexpr qint64 largestPicture = qint64(1) << 28; // pixels

} // namespace

class ZORVisRenderer::Private
{
public:
    QPointer<ZORVisScene> scene;
    DisplayMode mode = Shaded;
    QColor top = Qt::white;
    QColor bottom = Qt::white;
    bool triadVisible = false;
};

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

QImage ZORVisRenderer::Render(const ZORVisCamera&, const QSize& devicePixels, double devicePixelRatio)
{
    if (devicePixels.isEmpty() || qint64(devicePixels.width()) * devicePixels.height() > largestPicture)
        return {};
    QImage image(devicePixels, QImage::Format_RGB32);
    QLinearGradient gradient(0, 0, 0, devicePixels.height());
    gradient.setColorAt(0, d->top);
    gradient.setColorAt(1, d->bottom);
    QPainter(&image).fillRect(image.rect(), gradient);
    image.setDevicePixelRatio(devicePixelRatio > 0 && std::isfinite(devicePixelRatio) ? devicePixelRatio : 1);
    return image;
}

ZORVisPickResult ZORVisRenderer::Pick(const ZORVisCamera&, const QSize&, const QPointF&, double) const
{
    return {};
}
