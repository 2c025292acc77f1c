#include "ZORNestTranslationResponse.h"

#include <ZORWorker/ZORWorkResponse.h>

class ZORNestTranslationResponse::Private
{
public:
    ZORWorkResponse* workResponse;             // not owned
    std::shared_ptr<const QStringList> report; // written at the end of the job
};

ZORNestTranslationResponse::ZORNestTranslationResponse(ZORWorkResponse* workResponse,
                                                       std::shared_ptr<const QStringList> report,
                                                       QObject* parent)
    : QObject(parent)
    , d(new Private{workResponse, std::move(report)})
{
}

ZORNestTranslationResponse::~ZORNestTranslationResponse() = default;

ZORWorkResponse* ZORNestTranslationResponse::GetWorkResponse() const
{
    return d->workResponse;
}

QStringList ZORNestTranslationResponse::GetReport() const
{
    return d->workResponse->IsAtEnd() ? *d->report : QStringList();
}
