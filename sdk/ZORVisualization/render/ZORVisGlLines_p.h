// Node of the scene graph for lines.

#pragma once

#include "ZORVisGlShape_p.h"

class ZORMathPoint;
class ZORVisOptions;
struct ZORVisRepItem;

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
    void SetOptions(const ZORVisOptions& options);
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
