#include "ZORNestSourceProvider.h"

#include "ZORNestSourceProviders_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>

#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

namespace {

std::mutex s_mutex;
QList<ZORNestSourceProvider*> s_providers; // not owned

// Made by the first who asks.
void EnsureOwnProviders()
{
    static const std::vector<std::unique_ptr<ZORNestSourceProvider>> own = [] {
        std::vector<std::unique_ptr<ZORNestSourceProvider>> providers = ZORNestMakeSourceProviders();
        const std::lock_guard lock(s_mutex);
        for (const std::unique_ptr<ZORNestSourceProvider>& provider : providers)
            s_providers.append(provider.get());
        return providers;
    }();
    Q_UNUSED(own);
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

ZORNestSourceProvider::ZORNestSourceProvider(const QByteArray& providerId)
    : m_providerId(providerId)
{
}

ZORNestSourceProvider::~ZORNestSourceProvider()
{
    const std::lock_guard lock(s_mutex);
    s_providers.removeOne(this);
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
            QCoreApplication::translate("ZORNestSourceProvider", "provider '%1' exists already")
                .arg(QString::fromUtf8(provider->GetProviderId())));
    }
    s_providers.append(provider);
}
