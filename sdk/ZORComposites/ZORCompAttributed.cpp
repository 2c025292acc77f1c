#include "ZORCompAttributed.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>

ZORCompAttributed::ZORCompAttributed() = default;

ZORCompAttributed::~ZORCompAttributed() = default;

void ZORCompAttributed::SetAttributes(const QJsonObject& attributes)
{
    ZOR_TRACE_CALL(attributes);
    if (attributes == m_attributes)
        return;
    m_attributes = attributes;
    if (auto* const feature = dynamic_cast<ZORGeoGeometry*>(this))
        feature->ReportChange();
}
