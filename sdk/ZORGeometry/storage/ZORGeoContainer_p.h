// Private state of a container.

#pragma once

#include "ZORGeoContainerIndex_p.h"
#include "ZORGeoContainerNames_p.h"

#include <ZORGeometry/ZORGeoContainer.h>

#include <mutex>

class ZORGeoContainer::Private
{
public:
    void Register(ZORGeoGeometry* geometry);
    void Rename(ZORGeoGeometry* geometry);
    void TakeOut(ZORGeoGeometry* geometry);

    ZORGeoContainerIndex index;
    mutable std::mutex namesMutex; // of names that are asked for; changes of the list need no lock
    mutable ZORGeoContainerNames names;
    bool closing = false;
};
