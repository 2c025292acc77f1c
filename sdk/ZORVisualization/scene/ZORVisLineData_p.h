// What primitives without surfaces keep for drawing: lines, points and texts.

#pragma once

#include "ZORVisLazy_p.h"
#include "ZORVisPrimitiveData_p.h"

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>

#include <QString>

class ZORVisPointPicker;

struct ZORVisLineData final : ZORVisPrimitiveData
{
    ZORVisLineData(const ZORMathSetOfPoints& linePoints, ZORVisPolylinePrimitive::Structure lineStructure);
    ~ZORVisLineData() override;

    const ZORMathSetOfPoints points;
    const ZORVisPolylinePrimitive::Structure structure;
    const ZORVisLazy<ZORVisPointPicker> picker; // made by the first pick
};

struct ZORVisPointData final : ZORVisPrimitiveData
{
    explicit ZORVisPointData(const ZORMathSetOfPoints& markedPoints);
    ~ZORVisPointData() override;

    const ZORMathSetOfPoints points;
    const ZORVisLazy<ZORVisPointPicker> picker; // made by the first pick
};

struct ZORVisTextData final : ZORVisPrimitiveData
{
    ZORVisTextData(const QString& string, const ZORMathPoint& place,
                   ZORVisTextPrimitive::AnchorLocation anchorLocation,
                   ZORVisTextPrimitive::Scalability scaling);

    const QString text;
    const ZORMathPoint position;
    const ZORVisTextPrimitive::AnchorLocation anchor;
    const ZORVisTextPrimitive::Scalability scalability;
};
