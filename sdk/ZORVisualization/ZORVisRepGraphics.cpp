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

class ZORVisRepGraphics::Primitives
{
public:
    explicit Primitives(const QList<const ZORVisPrimitive*>& primitives)
        : list(WithoutNull(primitives))
    {
    }
    ~Primitives()
    {
        const QSet<const ZORVisPrimitive*> each(list.cbegin(), list.cend());
        qDeleteAll(each);
    }
    Q_DISABLE_COPY_MOVE(Primitives)

    const QList<const ZORVisPrimitive*> list; // owned
};

class ZORVisRepGraphics::Private
{
public:
    std::shared_ptr<const Primitives> primitives;
    ZORVisOptions options;
};

ZORVisRepGraphics::ZORVisRepGraphics(const QList<const ZORVisPrimitive*>& primitives,
                                     const ZORVisOptions& options)
    : ZORVisRep(ItemOf(primitives, options))
    , d(new Private{std::make_shared<const Primitives>(primitives), options})
{
    ZOR_TRACE_CALL(primitives, options);
}

ZORVisRepGraphics::ZORVisRepGraphics(const ZORVisOptions& options,
                                     std::shared_ptr<const Primitives> primitives)
    : ZORVisRep(ItemOf(primitives->list, options))
    , d(new Private{std::move(primitives), options})
{
}

ZORVisRepGraphics::~ZORVisRepGraphics() = default;

std::unique_ptr<ZORVisRepGraphics> ZORVisRepGraphics::WithOptions(const ZORVisOptions& options) const
{
    ZOR_TRACE_CALL(options);
    return std::unique_ptr<ZORVisRepGraphics>(new ZORVisRepGraphics(options, d->primitives));
}

const QList<const ZORVisPrimitive*>& ZORVisRepGraphics::GetPrimitives() const
{
    return d->primitives->list;
}

const ZORVisOptions& ZORVisRepGraphics::GetOptions() const
{
    return d->options;
}
