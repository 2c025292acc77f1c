#include "ZORCompAttributed.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>

class ZORCompAttributed::Private
{
public:
    QJsonObject attributes;
};

ZORCompAttributed::ZORCompAttributed()
    : d(std::make_unique<Private>())
{
}

ZORCompAttributed::~ZORCompAttributed() = default;

const QJsonObject& ZORCompAttributed::GetAttributes() const
{
    return d->attributes;
}

void ZORCompAttributed::SetAttributes(const QJsonObject& attributes)
{
    ZOR_TRACE_CALL(attributes);
    if (attributes == d->attributes)
        return;
    d->attributes = attributes;
    if (auto* const feature = dynamic_cast<ZORGeoGeometry*>(this))
        feature->ReportChange();
}
