#include "ZORNestTranslationResponse.h"

#include <ZORWorker/ZORWorkResponse.h>

ZORNestTranslationResponse::ZORNestTranslationResponse(ZORWorkResponse* workResponse,
                                                       std::shared_ptr<const QStringList> report,
                                                       QObject* parent)
    : QObject(parent)
    , m_workResponse(workResponse)
    , m_report(std::move(report))
{
}

ZORNestTranslationResponse::~ZORNestTranslationResponse() = default;

QStringList ZORNestTranslationResponse::GetReport() const
{
    return m_workResponse->IsAtEnd() ? *m_report : QStringList();
}
