#include "ZORVisFrameBuffer_p.h"

#include <ZORVisualization/ZORVisGraphicsContext.h>

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <algorithm>
#include <cstring>

ZORVisFrameBuffer::~ZORVisFrameBuffer()
{
    if (m_drawn.framebuffer == 0 || !ZORVisGraphicsContext::GetInstance()->MakeCurrent())
        return;
    Destroy(m_drawn);
    Destroy(m_resolved);
}

bool ZORVisFrameBuffer::Bind(const QSize& size, int samples)
{
    if (m_size != size || m_wantedSamples != samples || m_drawn.framebuffer == 0) {
        Destroy(m_drawn);
        Destroy(m_resolved);
        m_size = size;
        m_wantedSamples = m_samples = samples;
        if (m_samples > 1 && !(Create(m_drawn, m_samples) && Create(m_resolved, 0))) {
            Destroy(m_drawn);
            Destroy(m_resolved);
            m_samples = 1;
        }
        if (m_samples == 1 && !Create(m_drawn, 0)) {
            Destroy(m_drawn);
            return false;
        }
    }
    glBindFramebuffer(GL_FRAMEBUFFER, m_drawn.framebuffer);
    return true;
}

bool ZORVisFrameBuffer::Create(Target& target, int samples)
{
    while (glGetError() != GL_NO_ERROR) { // of anybody before
    }
    glGenFramebuffers(1, &target.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer);
    const auto attach = [&](unsigned& buffer, GLenum format, GLenum attachment) {
        glGenRenderbuffers(1, &buffer);
        glBindRenderbuffer(GL_RENDERBUFFER, buffer);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, m_size.width(), m_size.height());
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    };
    attach(target.color, GL_RGBA8, GL_COLOR_ATTACHMENT0);
    attach(target.depth, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    return glGetError() == GL_NO_ERROR && glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void ZORVisFrameBuffer::Destroy(Target& target)
{
    glDeleteFramebuffers(1, &target.framebuffer); // 0 is ignored
    glDeleteRenderbuffers(1, &target.color);
    glDeleteRenderbuffers(1, &target.depth);
    target = {};
}

void ZORVisFrameBuffer::Resolve(unsigned mask)
{
    if (m_samples == 1) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, m_drawn.framebuffer);
        return;
    }
    const int width = m_size.width();
    const int height = m_size.height();
    glBindFramebuffer(GL_READ_FRAMEBUFFER, m_drawn.framebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_resolved.framebuffer);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, mask, GL_NEAREST);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, m_resolved.framebuffer);
}

void ZORVisFrameBuffer::ReadColor(QImage& image, const QPoint& place)
{
    Resolve(GL_COLOR_BUFFER_BIT);
    const auto width = size_t(m_size.width());
    const int height = m_size.height();
    m_pixels.resize(width * size_t(height));
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, m_size.width(), height, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, m_pixels.data());
    for (int row = 0; row < height; ++row) { // OpenGL counts from the bottom
        const uint32_t* source = m_pixels.data() + width * size_t(height - 1 - row);
        auto* target = reinterpret_cast<uint32_t*>(image.scanLine(place.y() + row)) + place.x();
        std::transform(source, source + width, target, [](uint32_t pixel) { return pixel | 0xff000000U; });
    }
}

void ZORVisFrameBuffer::ReadDepth(std::vector<float>& depth)
{
    Resolve(GL_DEPTH_BUFFER_BIT);
    const auto width = size_t(m_size.width());
    const auto height = size_t(m_size.height());
    depth.resize(width * height);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, m_size.width(), m_size.height(), GL_DEPTH_COMPONENT, GL_FLOAT, depth.data());
    for (size_t row = 0; row < height / 2; ++row) {
        float* upper = depth.data() + row * width;
        std::swap_ranges(upper, upper + width, depth.data() + (height - 1 - row) * width);
    }
}
