#include "ZORVisTextPrimitive.h"

#include "scene/ZORVisLineData_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

namespace {

const ZORVisTextData& TextOf(const ZORVisPrimitive& primitive)
{
    return static_cast<const ZORVisTextData&>(*primitive.GetData());
}

} // namespace

ZORVisTextPrimitive::ZORVisTextPrimitive(const QString& text, const ZORMathPoint& position,
                                         AnchorLocation anchor, Scalability scalability)
    : ZORVisPrimitive(std::make_shared<ZORVisTextData>(text, position, anchor, scalability))
{
    ZOR_TRACE_CALL(text, position, anchor, scalability);
}

const QString& ZORVisTextPrimitive::GetText() const
{
    return TextOf(*this).text;
}

ZORMathPoint ZORVisTextPrimitive::GetPosition() const
{
    return TextOf(*this).position;
}

ZORVisTextPrimitive::AnchorLocation ZORVisTextPrimitive::GetAnchorLocation() const
{
    return TextOf(*this).anchor;
}

ZORVisTextPrimitive::Scalability ZORVisTextPrimitive::GetScalability() const
{
    return TextOf(*this).scalability;
}
