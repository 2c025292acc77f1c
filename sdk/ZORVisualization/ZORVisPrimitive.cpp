#include "ZORVisPrimitive.h"

#include "scene/ZORVisPrimitiveData_p.h"

ZORVisPrimitive::ZORVisPrimitive(std::shared_ptr<const ZORVisPrimitiveData> data)
    : m_data(std::move(data))
{
}

ZORVisPrimitive::~ZORVisPrimitive() = default;

ZORMathBoundingBox ZORVisPrimitive::GetBoundingBox() const
{
    return m_data->box;
}
