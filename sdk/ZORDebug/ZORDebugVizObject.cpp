#include "ZORDebugVizObject.h"

#include <ZORVisualization/ZORVisRep.h>

ZORDebugVizObject::ZORDebugVizObject(std::unique_ptr<ZORVisRep> rep, const QString& label)
    : m_rep(std::move(rep))
    , m_label(label)
{
}

ZORDebugVizObject::~ZORDebugVizObject() = default;
