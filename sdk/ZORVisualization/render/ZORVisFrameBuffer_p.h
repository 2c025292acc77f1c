// Memory that OpenGL draws into.

#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

#include <vector>

/// Colour and depth of one tile of a picture, with several samples per pixel where possible. All but the
/// destructor needs the graphics context to be current.
class ZORVisFrameBuffer
{
public:
    ZORVisFrameBuffer() = default;
    ~ZORVisFrameBuffer();
    Q_DISABLE_COPY_MOVE(ZORVisFrameBuffer)

    /// Makes the buffer the target of drawing, at the given size.
    /// \param samples  wanted per pixel; one where there cannot be more
    /// \return false where no such buffer can be made
    bool Bind(const QSize& size, int samples);
    /// Copies the colours into \a image, its upper left pixel at \a place.
    void ReadColor(QImage& image, const QPoint& place);
    /// Depths of the pixels row by row from the top, 0 at the near plane, 1 at the far plane.
    void ReadDepth(std::vector<float>& depth);

private:
    struct Target
    {
        unsigned framebuffer = 0;
        unsigned color = 0;
        unsigned depth = 0;
    };
    bool Create(Target& target, int samples);
    static void Destroy(Target& target);
    /// Brings the samples together and makes the result the source of reading.
    void Resolve(unsigned mask);

    QSize m_size;
    int m_wantedSamples = 0;
    int m_samples = 0;
    Target m_drawn;
    Target m_resolved; // unused with one sample per pixel
    std::vector<uint32_t> m_pixels;
};
