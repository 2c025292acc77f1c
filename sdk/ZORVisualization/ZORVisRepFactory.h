// Pictures of representations.

#pragma once

#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QColor>
#include <QImage>
#include <QList>
#include <QSize>

class ZORVisRep;

/// Draws representations without an environment.
/// Thread safety: thread-safe.
class ZORVISUALIZATION_EXPORT ZORVisRepFactory
{
public:
    /// All of the representations seen from the top (x to the right, y up), as large as the picture allows.
    /// Drawn without OpenGL: the same everywhere, pixel by pixel.
    /// \param size        pixels
    /// \param reps        not taken over; null entries are ignored; none gives an empty picture
    /// \param background  one colour for the whole picture; alpha is ignored, an invalid colour counts as
    ///                    white
    /// \return null for a size without area, or of more than 2^27 pixels
    static QImage CreateImage(const QSize& size, const QList<const ZORVisRep*>& reps,
                              const QColor& background);
};
