#include "ZORVisRepFactory.h"

#include "render/ZORVisPicture_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <map>

namespace {

std::map<quint64, ZORVisDrawObject> ObjectsOf(const QList<const ZORVisRep*>& reps)
{
    std::map<quint64, ZORVisDrawObject> objects;
    for (const ZORVisRep* rep : reps) {
        if (rep)
            objects.emplace(objects.size(), ZORVisDrawObject(rep, nullptr));
    }
    return objects;
}

} // namespace

QImage ZORVisRepFactory::CreateImage(const QSize& size, const QList<const ZORVisRep*>& reps,
                                     const QColor& background)
{
    ZOR_TRACE_CALL(size.width(), size.height(), reps, background.isValid() ? background.name() : QString());
    if (!ZORVisPicture::IsDrawable(size))
        return {};
    const std::map<quint64, ZORVisDrawObject> objects = ObjectsOf(reps);
    ZORVisDrawList drawn;
    ZORMathBoundingBox box;
    for (const auto& [key, object] : objects) {
        drawn.push_back(&object);
        box.Add(object.box);
    }
    ZORVisCamera camera;
    camera.SetStandardView(ZORVisCamera::Top);
    camera.FitAll(box, size);
    ZORVisFrame frame(camera, size, 1, drawn);
    frame.top = frame.bottom = background.isValid() ? background.rgb() : 0xffffffffU;
    // Without OpenGL: pictures in files shall not depend on a driver.
    return ZORVisPicture().Draw(frame, drawn, nullptr);
}
