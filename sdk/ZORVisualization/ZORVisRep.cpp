#include "ZORVisRep.h"

#include "scene/ZORVisDrawing_p.h"
#include "scene/ZORVisMeshData_p.h"

class ZORVisRep::Private
{
public:
    Items items;
};

ZORVisRep::ZORVisRep(Items items)
    : d(new Private{std::move(items)})
{
}

ZORVisRep::~ZORVisRep() = default;

ZORMathBoundingBox ZORVisRep::GetBoundingBox() const
{
    ZORMathBoundingBox box;
    for (const auto& item : d->items) {
        for (const auto& primitive : item->primitives)
            box.Add(primitive->box);
    }
    return box;
}

void ZORVisRep::Prepare() const
{
    for (const auto& item : d->items) {
        ZORVisForEach<ZORVisMeshData, ZORVisPrimitiveKind::Mesh>(
            *item, [](const ZORVisMeshData& mesh) { mesh.Prepare(); });
    }
}

const ZORVisRep::Items& ZORVisRep::GetItems() const
{
    return d->items;
}
