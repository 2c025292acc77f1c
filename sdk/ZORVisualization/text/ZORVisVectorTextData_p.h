// What a vector text holds.

#pragma once

#include <ZORMathematics/ZORMathPlane.h>
#include <ZORVisualization/ZORVisVectorText.h>

#include <QSharedData>

/// What a ZORVisVectorText holds: finite numbers and known codes.
class ZORVisVectorTextData : public QSharedData
{
public:
    ZORVisVectorFont font = ZORVisVectorFont(QString());
    ZORVisVectorText::Anchor anchor = ZORVisVectorText::BaselineLeft;
    ZORVisVectorText::Orientation orientation = ZORVisVectorText::Horizontal;
    ZORVisVectorText::Justification justification = ZORVisVectorText::Left;
    QFlags<ZORVisVectorText::Decoration> decorations;
    double lineSpacing = 0;
    double characterSpacing = 0;
    double textSize = 10;
    double tiltAngle = 0;
    ZORMathPlane plane;
    QString text;
};
