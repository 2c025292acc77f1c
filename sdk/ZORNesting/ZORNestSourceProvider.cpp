#include "ZORNestSourceProvider.h"

#include "job/ZORNestSourceProviders_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

namespace {

std::mutex s_mutex;
QList<ZORNestSourceProvider*> s_providers; // not owned

using Providers = std::vector<std::unique_ptr<ZORNestSourceProvider>>;

// Made by the first who asks.
const Providers& EnsureOwnProviders()
{
    static const Providers own = [] {
        Providers providers = ZORNestMakeSourceProviders();
        const std::lock_guard lock(s_mutex);
        for (const std::unique_ptr<ZORNestSourceProvider>& provider : providers)
            s_providers.append(provider.get());
        return providers;
    }();
    return own;
}

ZORNestSourceProvider* Find(const QByteArray& providerId)
{
    const auto found =
        std::find_if(s_providers.cbegin(), s_providers.cend(), [&](ZORNestSourceProvider* provider) {
            return provider->GetProviderId() == providerId;
        });
    return found == s_providers.cend() ? nullptr : *found;
}

} // namespace

bool ZORNestIsOwnProvider(const QByteArray& providerId)
{
    const Providers& own = EnsureOwnProviders();
    return std::any_of(own.begin(), own.end(), [&](const std::unique_ptr<ZORNestSourceProvider>& provider) {
        return provider->GetProviderId() == providerId;
    });
}

class ZORNestSourceProvider::Private
{
public:
    QByteArray providerId;
};

ZORNestSourceProvider::ZORNestSourceProvider(const QByteArray& providerId)
    : d(new Private{providerId})
{
}

ZORNestSourceProvider::~ZORNestSourceProvider()
{
    const std::lock_guard lock(s_mutex);
    s_providers.removeOne(this);
}

QByteArray ZORNestSourceProvider::GetProviderId() const
{
    return d->providerId;
}

QList<ZORNestSourceProvider*> ZORNestSourceProvider::GetProviders()
{
    EnsureOwnProviders();
    const std::lock_guard lock(s_mutex);
    return s_providers;
}

ZORNestSourceProvider* ZORNestSourceProvider::GetProvider(const QByteArray& providerId)
{
    EnsureOwnProviders();
    const std::lock_guard lock(s_mutex);
    return Find(providerId);
}

void ZORNestSourceProvider::RegisterProvider(ZORNestSourceProvider* provider)
{
    ZOR_TRACE_CALL(provider);
    EnsureOwnProviders();
    const std::lock_guard lock(s_mutex);
    if (Find(provider->GetProviderId())) {
        throw ZORSysException(
            tr("provider '%1' exists already").arg(QString::fromUtf8(provider->GetProviderId())));
    }
    s_providers.append(provider);
}
