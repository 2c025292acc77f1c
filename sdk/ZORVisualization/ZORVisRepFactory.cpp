#include "ZORVisRepFactory.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisRenderer.h>

QImage ZORVisRepFactory::CreateImage(const QSize& size, const QList<const ZORVisRep*>& reps,
                                     const QColor& background)
{
    ZOR_TRACE_CALL(size.width(), size.height(), reps, background.isValid() ? background.name() : QString());
    ZORVisRenderer renderer;
    renderer.SetBackground(background, background);
    return renderer.Render(ZORVisCamera(), size);
}
