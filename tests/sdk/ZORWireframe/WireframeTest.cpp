#include "WireframeTest.h"

#include <ZORSystem/ZORSysException.h>

WireframeTest::WireframeTest()
    : folder(new ZORFeatFolder(container.GetFeatureRoot("ZORFeatRoot")))
{
    folder->setObjectName("F");
    folder->Initialize();
}

ZORGeoSurface* WireframeTest::AddSquare(const QString& name, double size)
{
    const QList<ZORMathPoint> corners{{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}};
    return Make<ZORGeoSurface>(name, corners, QList<ZORGeoSurface::Corners>{{0, 1, 2}, {0, 2, 3}});
}
