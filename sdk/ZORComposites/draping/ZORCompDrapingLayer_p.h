// Private state of a draping layer.

#pragma once

#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>

class ZORCompDrapingLayerPrivate
{
public:
    ZORGeoReference<ZORCompStrategy> strategy;
    ZORGeoReference<ZORGeoGeometry> surface;
    ZORGeoReference<ZORGeoGeometry> seed;
    ZORGeoReference<ZORCompRosette> rosette;
    ZORMathVector direction{1, 0, 0};

    ZORCompDrapingNet net;
    ZORGeoReference<const ZORGeoSurface> drapedSurface; // which the net is on
};
