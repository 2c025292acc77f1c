// Pictures of lines, symbols and texts.

#pragma once

#include "sdk/ZORVisualization/VisTest.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>

class PictureTest : public VisTest
{
protected:
    void ShowLine(const ZORMathPoint& from, const ZORMathPoint& to, const ZORVisOptions& options)
    {
        Show({new ZORVisPolylinePrimitive({from, to}, ZORVisPolylinePrimitive::Pairs)}, options);
    }
    void ShowSymbol(const ZORMathPoint& point, ZORVisOptions::PointSymbol symbol, const QColor& color)
    {
        ZORVisOptions options = Options(color);
        options.SetPointSymbol(symbol);
        Show({new ZORVisPointPrimitive(ZORMathSetOfPoints{point})}, options);
    }
    void ShowText(const QString& text, ZORVisTextPrimitive::AnchorLocation anchor, double size,
                  ZORVisTextPrimitive::Scalability scalability = ZORVisTextPrimitive::FixedSize)
    {
        ZORVisOptions options = Options(Qt::black);
        options.SetTextSize(size);
        Show({new ZORVisTextPrimitive(text, {0, 0, 0}, anchor, scalability)}, options);
    }
    void Clear() { qDeleteAll(environment.GetVirtualObjects()); }
};

inline bool IsReddish(const QColor& color)
{
    return color.red() > color.green() + 60 && color.red() > color.blue() + 60;
}

inline bool IsBluish(const QColor& color)
{
    return color.blue() > color.red() + 60 && color.blue() > color.green() + 40;
}
