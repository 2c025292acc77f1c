// View of requests to point at something, for tests.

#pragma once

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdPickAnswerer.h>
#include <ZORCommand/ZORCmdPickRequest.h>

/// Records the active request and counts; the test answers it. The controller's answerer while it lives.
class PickAnswerer final : public ZORCmdPickAnswerer
{
public:
    PickAnswerer() { ZORCmdController::GetController()->SetPickAnswerer(this); }

    void BeginPick(ZORCmdPickRequest* started) override
    {
        request = started;
        ++numBegun;
    }
    void EndPick(ZORCmdPickRequest* ended) override
    {
        isSame = isSame && ended == request;
        request = nullptr;
        ++numEnded;
    }

    ZORCmdPickRequest* request = nullptr; // not owned; active
    int numBegun = 0;
    int numEnded = 0;
    bool isSame = true; ///< every request that ended was the one that began last
};
