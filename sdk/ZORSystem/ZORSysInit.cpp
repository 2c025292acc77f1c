#include "ZORSysInit.h"

#include <QDebug>
#include <QMutex>

#include <exception>
#include <utility>
#include <vector>

namespace {

struct InitState
{
    QMutex mutex; // not held while callbacks run
    std::vector<std::function<void()>> waiting;
    bool initialised = false;
};

InitState& State()
{
    static InitState state;
    return state;
}

// Callbacks often run in a static initialiser, where an exception would end the process.
void Run(const std::function<void()>& callback)
{
    try {
        if (callback)
            callback();
    } catch (const std::exception& exception) {
        qCritical("initialisation callback failed: %s", exception.what());
    } catch (...) {
        qCritical("initialisation callback failed");
    }
}

} // namespace

bool ZORSysRegisterInit(const std::function<void()>& callback)
{
    {
        const QMutexLocker lock(&State().mutex);
        if (!State().initialised) {
            State().waiting.push_back(callback);
            return true;
        }
    }
    Run(callback);
    return true;
}

void ZORSysInitialize()
{
    std::vector<std::function<void()>> callbacks;
    {
        const QMutexLocker lock(&State().mutex);
        State().initialised = true;
        callbacks = std::exchange(State().waiting, {});
    }
    for (const auto& callback : callbacks)
        Run(callback);
}
