#include "ZORVisRepGraphics.h"

#include "scene/ZORVisDrawing_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORVisualization/ZORVisPrimitive.h>

#include <QSet>

namespace {

QList<const ZORVisPrimitive*> WithoutNull(QList<const ZORVisPrimitive*> primitives)
{
    primitives.removeAll(nullptr);
    return primitives;
}

ZORVisRep::Items ItemOf(const QList<const ZORVisPrimitive*>& primitives, const ZORVisOptions& options)
{
    auto item = std::make_shared<ZORVisRepItem>();
    item->options = options;
    item->primitives.reserve(size_t(primitives.size()));
    for (const ZORVisPrimitive* primitive : primitives) {
        if (primitive)
            item->primitives.push_back(primitive->GetData());
    }
    return {std::move(item)};
}

} // namespace

ZORVisRepGraphics::ZORVisRepGraphics(const QList<const ZORVisPrimitive*>& primitives,
                                     const ZORVisOptions& options)
    : ZORVisRep(ItemOf(primitives, options))
    , m_primitives(WithoutNull(primitives))
    , m_options(options)
{
    ZOR_TRACE_CALL(primitives, options);
}

ZORVisRepGraphics::~ZORVisRepGraphics()
{
    const QSet<const ZORVisPrimitive*> each(m_primitives.cbegin(), m_primitives.cend());
    qDeleteAll(each);
}
