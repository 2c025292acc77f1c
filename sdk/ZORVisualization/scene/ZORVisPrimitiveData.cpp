#include "ZORVisPrimitiveData_p.h"

ZORVisPrimitiveData::~ZORVisPrimitiveData() = default;

void ZORVisPrimitiveData::AddToBox(const QList<ZORMathPoint>& points)
{
    for (const ZORMathPoint& point : points)
        box.Add(point);
}
