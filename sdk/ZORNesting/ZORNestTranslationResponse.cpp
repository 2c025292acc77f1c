#include "ZORNestTranslationResponse.h"

#include "ZORNestJobBytes_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkResponse.h>

ZORNestTranslationResponse::ZORNestTranslationResponse(ZORWorkResponse* workResponse, QObject* parent)
    : QObject(parent)
    , m_workResponse(workResponse)
{
}

ZORNestTranslationResponse::~ZORNestTranslationResponse() = default;

QStringList ZORNestTranslationResponse::GetReport() const
{
    if (m_workResponse->GetStatus() != ZORWorkResponse::Finished)
        return {};
    try {
        return ZORNestJobBytes::ReadReport(m_workResponse->GetResult().GetData());
    } catch (const ZORSysException& exception) {
        return {exception.GetMessage()};
    }
}
