#include "ZORSysInit.h"

#include <utility>
#include <vector>

namespace {

struct InitState
{
    std::vector<std::function<void()>> waiting;
    bool initialised = false;
};

InitState& State()
{
    static InitState state;
    return state;
}

} // namespace

bool ZORSysRegisterInit(const std::function<void()>& callback)
{
    if (State().initialised)
        callback();
    else
        State().waiting.push_back(callback);
    return true;
}

void ZORSysInitialize()
{
    State().initialised = true;
    const auto callbacks = std::exchange(State().waiting, {});
    for (const auto& callback : callbacks)
        callback();
}
