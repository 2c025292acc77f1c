// Pictures of the point symbols.

#pragma once

#include <ZORVisualization/ZORVisOptions.h>

#include <QHash>
#include <QImage>

/// Draws each symbol once per colour and size and keeps the picture.
class ZORVisMarkers
{
public:
    /// The symbol in the middle of an image of odd width and height, in device pixels. Crosses for codes out
    /// of range.
    /// \param ratio  device pixels per device independent pixel
    QImage GetImage(ZORVisOptions::PointSymbol symbol, const QColor& color, double ratio);

private:
    QHash<QString, QImage> m_images;
};
