// Draws whole pictures.

#pragma once

#include "ZORVisFrameBuffer_p.h"
#include "ZORVisMarkers_p.h"
#include "scene/ZORVisFrame_p.h"

#include <QImage>
#include <QSize>

class ZORVisGlScene;

/// Puts surfaces, lines and what lies over them together, tile by tile where the picture is large. Keeps
/// buffers from one picture to the next.
class ZORVisPicture
{
public:
    /// Whether a picture of that size can be drawn: at least one and at most 2^27 pixels.
    static bool IsDrawable(const QSize& size);

    /// \param glScene  nodes of \a objects, up to date; null to draw without OpenGL
    /// \return of format RGB32; null when there is not enough memory
    QImage Draw(const ZORVisFrame& frame, const ZORVisDrawList& objects, ZORVisGlScene* glScene);

private:
    ZORVisFrameBuffer m_buffer;
    ZORVisMarkers m_markers;
    std::vector<float> m_depth; // scratch
};
