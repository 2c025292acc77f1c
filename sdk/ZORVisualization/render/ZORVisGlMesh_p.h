// Node of the scene graph for triangles.

#pragma once

#include "ZORVisGlShape_p.h"

class ZORMathPoint;
struct ZORVisMeshData;

/// Triangles of one mesh.
class ZORVisGlMesh final : public ZORVisGlShape
{
    SO_NODE_HEADER(ZORVisGlMesh);

public:
    static void initClass();
    ZORVisGlMesh();
    /// \param origin  of the node's coordinates
    /// \param mode    not owned; outlives the node
    void Fill(const ZORVisMeshData& mesh, const ZORMathPoint& origin, const ZORVisGlMode* mode);
    void GLRender(SoGLRenderAction* action) override;

private:
    ~ZORVisGlMesh() override;

    unsigned m_positions = 0;
    unsigned m_normals = 0;
    unsigned m_corners = 0;
    int m_numCorners = 0;
};
