#include "ZORWorkJobKind.h"

#include <ZORSystem/ZORSysException.h>

#include <map>
#include <mutex>

namespace {

constexpr qsizetype kMaximumNameSize = 100; // bytes

struct Kind
{
    ZORWorkJobKind::Run run;
    ZORWorkJobKind::Complete complete;
};

struct Registry
{
    std::mutex mutex; // of the kinds
    std::map<QByteArray, Kind> kinds;
};

// Never destroyed: libraries register in static initializers, and jobs may run until the end of the process.
Registry& GetRegistry()
{
    static Registry* const registry = new Registry;
    return *registry;
}

// Returns a copy: the functions run without the lock.
Kind GetKind(const QByteArray& name)
{
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.kinds.find(name);
    if (found == registry.kinds.end())
        throw ZORSysException(ZORWorkJobKind::tr("there is no job kind '%1'").arg(QString::fromUtf8(name)));
    return found->second;
}

} // namespace

void ZORWorkJobKind::Register(const QByteArray& name, Run run, Complete complete)
{
    if (name.isEmpty() || name.size() > kMaximumNameSize)
        throw ZORSysException(tr("a job kind needs a name of 1 to 100 bytes"));
    if (!run)
        throw ZORSysException(tr("job kind '%1' has no function").arg(QString::fromUtf8(name)));
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    if (!registry.kinds.try_emplace(name, Kind{std::move(run), std::move(complete)}).second)
        throw ZORSysException(tr("job kind '%1' exists already").arg(QString::fromUtf8(name)));
}

void ZORWorkJobKind::Unregister(const QByteArray& name)
{
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.kinds.erase(name);
}

bool ZORWorkJobKind::IsRegistered(const QByteArray& name)
{
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    return registry.kinds.contains(name);
}

QList<QByteArray> ZORWorkJobKind::GetNames()
{
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    QList<QByteArray> names;
    for (const auto& [name, kind] : registry.kinds)
        names.append(name);
    return names;
}

ZORWorkResult ZORWorkJobKind::RunJob(const QByteArray& name, const ZORWorkContext& context,
                                     const QByteArray& input)
{
    return GetKind(name).run(context, input);
}

bool ZORWorkJobKind::CanComplete(const QByteArray& name)
{
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.kinds.find(name);
    return found != registry.kinds.end() && found->second.complete;
}

ZORWorkResult ZORWorkJobKind::CompleteJob(const QByteArray& name, const ZORWorkContext& context,
                                          const QByteArray& input, const QByteArray& interim)
{
    const Kind kind = GetKind(name);
    if (!kind.complete)
        throw ZORSysException(
            tr("job kind '%1' cannot complete interim results").arg(QString::fromUtf8(name)));
    return kind.complete(context, input, interim);
}
