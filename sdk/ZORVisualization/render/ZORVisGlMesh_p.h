// Node of the scene graph for triangles.

#pragma once

#include "ZORVisGlShape_p.h"

#include <ZORVisualization/ZORVisOptions.h>

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
    void SetOptions(const ZORVisOptions& options);
    void GLRender(SoGLRenderAction* action) override;

private:
    ~ZORVisGlMesh() override;

    /// Whether nothing of the mesh belongs to the present pass.
    bool IsOtherPass() const;
    void Draw() const;
    void DrawEdges() const;
    void DrawEdgesOnSurface() const;

    SbVec3f m_offset; // from the origin of the node to that of the positions
    ZORVisOptions::Display m_display = ZORVisOptions::Shaded;
    QColor m_edgeColor;
    bool m_isTransparent = false;
    unsigned m_positions = 0;
    unsigned m_normals = 0;
    unsigned m_corners = 0;
    int m_numCorners = 0;
};
