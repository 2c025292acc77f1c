// Base of the nodes of the scene graph that draw from their own buffers.

#pragma once

#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoSubNode.h>
#include <vector>

/// What the nodes need to know about the picture that is being drawn.
struct ZORVisGlMode
{
    /// What is drawn by one traversal of the graph.
    enum class Pass {
        All,
        Surfaces, ///< opaque surfaces
        Depth,    ///< the depth of opaque surfaces for the lines on them
        Rest      ///< lines, edges on surfaces, and what is transparent
    };
    Pass pass = Pass::All;
    double ratio = 1; // device pixels per device independent pixel
    bool wireframe = false;
    double pushBack = 0;           // of surfaces, in steps of the depth buffer
    double linePushBackFactor = 0; // of surfaces in the pass Depth
};

/// Base class; holds buffers and reports the extent to Coin.
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
    /// \param offset       of the coordinates
    void SetExtent(const std::vector<float>& coordinates, const SbVec3f& offset = SbVec3f(0, 0, 0));
};
