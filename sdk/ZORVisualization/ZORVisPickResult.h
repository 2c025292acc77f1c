// What lies under a pixel.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

class QObject;
class ZORVisVirtualObject;

/// Result of ZORVisRenderer::Pick(); valid until the scene changes.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORVisPickResult
{
    ZORVisVirtualObject* object = nullptr; // not owned; null: a drawing of the scene, or nothing, was hit
    QObject* owner = nullptr; // not owned; of the object or drawing; null when there is none or it has died
    ZORMathPoint point;       // the place that was hit, millimetres
    int triangle = 0;         // 1 ... number of triangles of its primitive; 0: no triangle was hit

    bool IsHit() const { return object || owner; }
};
