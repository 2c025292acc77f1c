#include "ZORCompAttributed.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORCompAttributed::ZORCompAttributed() = default;

ZORCompAttributed::~ZORCompAttributed() = default;

void ZORCompAttributed::SetAttributes(const QJsonObject& attributes)
{
    ZOR_TRACE_CALL(attributes);
    m_attributes = attributes;
}
