#include "ZORVisGraphicsContext.h"

class ZORVisGraphicsContext::Private
{
public:
    QString reason;
};

ZORVisGraphicsContext::ZORVisGraphicsContext()
    : d(std::make_unique<Private>())
{
    if (qEnvironmentVariableIntValue("ZOR_NO_GRAPHICS") == 1)
        d->reason = QStringLiteral("graphics are switched off by the environment variable ZOR_NO_GRAPHICS");
}

ZORVisGraphicsContext::~ZORVisGraphicsContext() = default;

ZORVisGraphicsContext* ZORVisGraphicsContext::GetInstance()
{
    static ZORVisGraphicsContext instance;
    return &instance;
}

bool ZORVisGraphicsContext::IsAvailable() const
{
    return false;
}

QString ZORVisGraphicsContext::GetFailureReason() const
{
    return d->reason;
}

QString ZORVisGraphicsContext::GetDescription() const
{
    return QStringLiteral("software drawing");
}

bool ZORVisGraphicsContext::MakeCurrent() const
{
    return false;
}

int ZORVisGraphicsContext::GetMaximumSize() const
{
    return 0;
}

int ZORVisGraphicsContext::GetSamples() const
{
    return 1;
}
