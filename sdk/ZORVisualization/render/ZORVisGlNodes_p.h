// Nodes of the scene graph that draw from buffers of their own.

#pragma once

#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoSubNode.h>
#include <vector>

class ZORMathPoint;
struct ZORVisMeshData;
struct ZORVisRepItem;

/// What the nodes need to know about the picture that is being drawn.
struct ZORVisGlMode
{
    double ratio = 1; // device pixels per device independent pixel
    bool wireframe = false;
    double pushBack = 0; // of surfaces, in steps of the depth buffer
};

/// Base: holds buffers and tells Coin the extent.
class ZORVisGlShape : public SoShape
{
    SO_NODE_ABSTRACT_HEADER(ZORVisGlShape);

public:
    static void initClass();

protected:
    ZORVisGlShape();
    ~ZORVisGlShape() override;

    void computeBBox(SoAction* action, SbBox3f& box, SbVec3f& center) override;
    void generatePrimitives(SoAction* action) override;

    /// Copies \a bytes into a new buffer; 0 when there is nothing to copy.
    unsigned CreateBuffer(const void* data, size_t bytes);

    const ZORVisGlMode* m_mode = nullptr; // not owned

private:
    std::vector<unsigned> m_buffers;
    SbBox3f m_box;

protected:
    /// \param coordinates  x, y, z of every point
    void SetExtent(const std::vector<float>& coordinates);
};

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

/// All lines of one item of a representation.
class ZORVisGlLines final : public ZORVisGlShape
{
    SO_NODE_HEADER(ZORVisGlLines);

public:
    static void initClass();
    ZORVisGlLines();
    /// \param origin  of the node's coordinates
    /// \param mode    not owned; outlives the node
    /// \return false when there is nothing to draw
    bool Fill(const ZORVisRepItem& item, const ZORMathPoint& origin, const ZORVisGlMode* mode);
    void GLRender(SoGLRenderAction* action) override;

private:
    ~ZORVisGlLines() override;
    void Draw() const;
    void DrawJoints(double width) const;

    unsigned m_positions = 0;
    std::vector<int> m_chainStarts; // first point and number of points of every chain
    std::vector<int> m_chainCounts;
    std::vector<int> m_jointStarts; // inner points of the chains of three points or more
    std::vector<int> m_jointCounts;
    int m_firstPair = 0; // points of the separate segments, behind the chains
    int m_numPairPoints = 0;
    double m_thickness = 1;
    unsigned short m_pattern = 0xffff;
};
