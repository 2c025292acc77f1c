// Private state of a container.

#pragma once

#include "ZORGeoContainerIndex_p.h"
#include "ZORGeoContainerNames_p.h"

class ZORGeoContainerPrivate
{
public:
    void Register(ZORGeoGeometry* geometry);
    void Rename(ZORGeoGeometry* geometry);
    void TakeOut(ZORGeoGeometry* geometry);

    ZORGeoContainerIndex index;
    mutable ZORGeoContainerNames names;
    bool closing = false;
};
