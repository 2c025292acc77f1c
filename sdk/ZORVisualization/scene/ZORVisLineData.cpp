#include "ZORVisLineData_p.h"
#include "ZORVisPicking_p.h"

ZORVisLineData::ZORVisLineData(const ZORMathSetOfPoints& linePoints,
                               ZORVisPolylinePrimitive::Structure lineStructure)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Lines)
    , points(linePoints)
    , structure(lineStructure)
{
    AddToBox(points);
}

ZORVisLineData::~ZORVisLineData() = default;

ZORVisPointData::ZORVisPointData(const ZORMathSetOfPoints& markedPoints)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Points)
    , points(markedPoints)
{
    AddToBox(points);
}

ZORVisPointData::~ZORVisPointData() = default;

ZORVisTextData::ZORVisTextData(const QString& string, const ZORMathPoint& place,
                               ZORVisTextPrimitive::AnchorLocation anchorLocation,
                               ZORVisTextPrimitive::Scalability scaling)
    : ZORVisPrimitiveData(ZORVisPrimitiveKind::Text)
    , text(string)
    , position(place)
    , anchor(anchorLocation)
    , scalability(scaling)
{
    box.Add(position);
}
