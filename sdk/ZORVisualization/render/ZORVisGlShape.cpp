#include "ZORVisGlShape_p.h"

#include <ZORVisualization/ZORVisGraphicsContext.h>

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

SO_NODE_ABSTRACT_SOURCE(ZORVisGlShape);

void ZORVisGlShape::initClass()
{
    SO_NODE_INIT_ABSTRACT_CLASS(ZORVisGlShape, SoShape, "Shape");
}

ZORVisGlShape::ZORVisGlShape()
{
    SO_NODE_CONSTRUCTOR(ZORVisGlShape);
}

ZORVisGlShape::~ZORVisGlShape()
{
    if (!m_buffers.empty() && ZORVisGraphicsContext::GetInstance()->MakeCurrent())
        glDeleteBuffers(int(m_buffers.size()), m_buffers.data());
}

void ZORVisGlShape::computeBBox(SoAction*, SbBox3f& box, SbVec3f& center)
{
    box = m_box;
    center = m_box.isEmpty() ? SbVec3f(0, 0, 0) : m_box.getCenter();
}

// For actions other than drawing, which nobody applies.
void ZORVisGlShape::generatePrimitives(SoAction*) {}

unsigned ZORVisGlShape::CreateBuffer(const void* data, size_t bytes)
{
    if (bytes == 0)
        return 0;
    unsigned buffer = 0;
    glGenBuffers(1, &buffer);
    m_buffers.push_back(buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(bytes), data, GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    return buffer;
}

void ZORVisGlShape::SetExtent(const std::vector<float>& coordinates, const SbVec3f& offset)
{
    m_box.makeEmpty();
    for (size_t i = 0; i + 2 < coordinates.size(); i += 3)
        m_box.extendBy(SbVec3f(coordinates[i], coordinates[i + 1], coordinates[i + 2]) + offset);
}
