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

class ZORVisRepGraphics::Private
{
public:
    QList<const ZORVisPrimitive*> primitives; // owned
    ZORVisOptions options;
};

ZORVisRepGraphics::ZORVisRepGraphics(const QList<const ZORVisPrimitive*>& primitives,
                                     const ZORVisOptions& options)
    : ZORVisRep(ItemOf(primitives, options))
    , d(new Private{WithoutNull(primitives), options})
{
    ZOR_TRACE_CALL(primitives, options);
}

ZORVisRepGraphics::~ZORVisRepGraphics()
{
    const QSet<const ZORVisPrimitive*> each(d->primitives.cbegin(), d->primitives.cend());
    qDeleteAll(each);
}

const QList<const ZORVisPrimitive*>& ZORVisRepGraphics::GetPrimitives() const
{
    return d->primitives;
}

const ZORVisOptions& ZORVisRepGraphics::GetOptions() const
{
    return d->options;
}
