// State of a response.

#pragma once

#include "ZORWorkControl_p.h"
#include "ZORWorkDirectory_p.h"

#include <ZORWorker/ZORWorkResponse.h>

#include <functional>
#include <memory>

class ZORWorkResponse::Private
{
public:
    quint64 id = 0;
    QString name;
    bool runsWhenStopped = false;
    Status status = Created;
    double progress = 0;
    ZORWorkResult result;
    std::function<ZORWorkResult(const ZORWorkResult&)> accept; // ZORWorkJob::accept
    QString reason;
    QString directoryPath;
    std::shared_ptr<ZORWorkDirectory> directory; // of a finished job
    std::shared_ptr<ZORWorkControl> control;
};
