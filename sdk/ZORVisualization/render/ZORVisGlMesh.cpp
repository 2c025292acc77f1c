#include "ZORVisGlMesh_p.h"
#include "ZORVisLineStyles_p.h"
#include "scene/ZORVisFrame_p.h"
#include "scene/ZORVisMeshArrays_p.h"
#include "scene/ZORVisMeshData_p.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/bundles/SoMaterialBundle.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/misc/SoState.h>

using Pass = ZORVisGlMode::Pass;

SO_NODE_SOURCE(ZORVisGlMesh);

void ZORVisGlMesh::initClass()
{
    SO_NODE_INIT_CLASS(ZORVisGlMesh, ZORVisGlShape, "ZORVisGlShape");
}

ZORVisGlMesh::ZORVisGlMesh()
{
    SO_NODE_CONSTRUCTOR(ZORVisGlMesh);
}

ZORVisGlMesh::~ZORVisGlMesh() = default;

void ZORVisGlMesh::Fill(const ZORVisMeshData& mesh, const ZORMathPoint& origin, const ZORVisGlMode* mode)
{
    m_mode = mode;
    const auto arrays = mesh.GetArrays(ZORVisMeshData::Arrays::UsedOnce);
    const ZORMathVector offset = mesh.box.GetCenter() - origin;
    m_offset = SbVec3f(float(offset.GetX()), float(offset.GetY()), float(offset.GetZ()));
    SetExtent(arrays->positions, m_offset);
    m_positions = CreateBuffer(arrays->positions.data(), arrays->positions.size() * sizeof(float));
    m_normals = CreateBuffer(arrays->normals.data(), arrays->normals.size() * sizeof(float));
    m_corners = CreateBuffer(arrays->corners.data(), arrays->corners.size() * sizeof(uint32_t));
    m_numCorners = int(arrays->corners.size());
}

void ZORVisGlMesh::SetOptions(const ZORVisOptions& options)
{
    m_display = options.GetDisplay();
    m_edgeColor = ZORVisEdgeColor(options.GetDrawnColor());
    m_isTransparent = m_edgeColor.alpha() < 255;
}

bool ZORVisGlMesh::IsOtherPass() const
{
    switch (m_mode->pass) {
    case Pass::All:
        return false;
    case Pass::Surfaces:
    case Pass::Depth:
        return m_isTransparent;
    case Pass::Rest:
        break;
    }
    return !m_isTransparent && (m_mode->wireframe || m_display != ZORVisOptions::WithEdges);
}

void ZORVisGlMesh::GLRender(SoGLRenderAction* action)
{
    if (m_numCorners == 0 || IsOtherPass() || !shouldGLRender(action))
        return;
    const bool isWireframe = m_mode->wireframe || m_display == ZORVisOptions::Wireframe;
    SoState* state = action->getState();
    state->push();
    if (isWireframe)
        SoLazyElement::setLightModel(state, SoLazyElement::BASE_COLOR);
    SoMaterialBundle(action).sendFirst();

    // Once, since drivers forget changes within a nested pair. Materials follow the current color.
    glPushAttrib(GL_POLYGON_BIT | GL_LINE_BIT | GL_CURRENT_BIT | GL_LIGHTING_BIT);
    glPushMatrix();
    glTranslatef(m_offset[0], m_offset[1], m_offset[2]);
    glBindBuffer(GL_ARRAY_BUFFER, m_positions);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, m_normals);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_corners);
    glEnableClientState(GL_VERTEX_ARRAY);
    if (isWireframe)
        DrawEdges();
    else
        Draw();
    glDisableClientState(GL_VERTEX_ARRAY);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glPopMatrix();
    glPopAttrib();
    state->pop();
}

void ZORVisGlMesh::Draw() const
{
    const Pass pass = m_mode->pass;
    if (pass != Pass::Rest || m_isTransparent) {
        const double factor = pass == Pass::Depth ? m_mode->linePushBackFactor : ZORVisFrame::kPushBackFactor;
        glEnable(GL_POLYGON_OFFSET_FILL); // lines on the surface stay in front of it
        glPolygonOffset(float(factor), float(m_mode->pushBack));
        glEnableClientState(GL_NORMAL_ARRAY);
        glDrawElements(GL_TRIANGLES, m_numCorners, GL_UNSIGNED_INT, nullptr);
        glDisableClientState(GL_NORMAL_ARRAY);
    }
    if (m_display == ZORVisOptions::WithEdges && (pass == Pass::All || pass == Pass::Rest))
        DrawEdgesOnSurface();
}

void ZORVisGlMesh::DrawEdgesOnSurface() const
{
    glDisable(GL_LIGHTING);
    glColor4ub(GLubyte(m_edgeColor.red()), GLubyte(m_edgeColor.green()), GLubyte(m_edgeColor.blue()),
               GLubyte(m_edgeColor.alpha()));
    DrawEdges();
}

void ZORVisGlMesh::DrawEdges() const
{
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glLineWidth(float(m_mode->ratio));
    glDisable(GL_LINE_STIPPLE);
    glDrawElements(GL_TRIANGLES, m_numCorners, GL_UNSIGNED_INT, nullptr);
}
