// Objects that are made when they are first needed.

#pragma once

#include <memory>
#include <mutex>
#include <utility>

/// Makes an object when it is first asked for, once for all threads: representations share their data, so several
/// threads may draw or pick the same. Later calls cost one atomic read.
template<class T>
class ZORVisLazy
{
public:
    /// Returns the object, constructed from the arguments of the first call; other threads wait for that call.
    template<class... Arguments>
    const T& Get(const Arguments&... arguments) const
    {
        std::call_once(m_once, [&] { m_object = std::make_unique<const T>(arguments...); });
        return *m_object;
    }

private:
    mutable std::once_flag m_once;
    mutable std::unique_ptr<const T> m_object;
};
