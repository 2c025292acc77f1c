#include "ZORVisRep.h"

#include "scene/ZORVisDrawing_p.h"

ZORVisRep::ZORVisRep(Items items)
    : m_items(std::move(items))
{
}

ZORVisRep::~ZORVisRep() = default;

ZORMathBoundingBox ZORVisRep::GetBoundingBox() const
{
    ZORMathBoundingBox box;
    for (const auto& item : m_items) {
        for (const auto& primitive : item->primitives)
            box.Add(primitive->box);
    }
    return box;
}
