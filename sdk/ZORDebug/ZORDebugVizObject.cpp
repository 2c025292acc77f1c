#include "ZORDebugVizObject.h"

#include <ZORVisualization/ZORVisRep.h>

class ZORDebugVizObject::Private
{
public:
    std::unique_ptr<ZORVisRep> rep;
    QString label;
};

ZORDebugVizObject::ZORDebugVizObject(std::unique_ptr<ZORVisRep> rep, const QString& label)
    : d(new Private{std::move(rep), label})
{
}

ZORDebugVizObject::~ZORDebugVizObject() = default;

ZORVisRep* ZORDebugVizObject::GetRep() const
{
    return d->rep.get();
}

const QString& ZORDebugVizObject::GetLabel() const
{
    return d->label;
}
