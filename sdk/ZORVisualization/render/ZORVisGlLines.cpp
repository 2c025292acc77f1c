#include "ZORVisGlLines_p.h"
#include "ZORVisLineStyles_p.h"
#include "scene/ZORVisDrawing_p.h"
#include "scene/ZORVisLineData_p.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/bundles/SoMaterialBundle.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/misc/SoState.h>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double kSmallestJoint = 2.5; // device pixels; thinner lines show no notch where they bend

// A disc as large as the texture; smooth points are squares on some platforms. There is one context, and so
// one texture for the process.
unsigned GetDiscTexture()
{
    static const unsigned texture = [] {
        constexpr int kSize = 32;
        std::array<unsigned char, kSize * kSize> alpha;
        for (int i = 0; i < kSize * kSize; ++i) {
            const int row = i / kSize;
            const double distance = std::hypot(i % kSize + 0.5 - kSize / 2.0, row + 0.5 - kSize / 2.0);
            alpha[size_t(i)] = static_cast<unsigned char>(255 * std::clamp(kSize / 2.0 - distance, 0.0, 1.0));
        }
        unsigned created = 0;
        glGenTextures(1, &created);
        glBindTexture(GL_TEXTURE_2D, created);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, kSize, kSize, 0, GL_ALPHA, GL_UNSIGNED_BYTE, alpha.data());
        return created;
    }();
    return texture;
}

// Coordinates of all lines of an item: chains first, then pairs of points.
class LineArrays
{
public:
    LineArrays(const ZORVisRepItem& item, const ZORMathPoint& origin)
        : m_origin(origin)
    {
        ZORVisForEach<ZORVisLineData, ZORVisPrimitiveKind::Lines>(item, [this](const ZORVisLineData& lines) {
            if (lines.structure != ZORVisPolylinePrimitive::Pairs)
                AddChain(lines.points);
        });
        firstPair = int(positions.size() / 3);
        ZORVisForEach<ZORVisLineData, ZORVisPrimitiveKind::Lines>(item, [this](const ZORVisLineData& lines) {
            if (lines.structure == ZORVisPolylinePrimitive::Pairs)
                AddPairs(lines.points);
        });
    }

    std::vector<float> positions;
    std::vector<int> chainStarts;
    std::vector<int> chainCounts;
    int firstPair = 0;

private:
    void AddChain(const ZORMathSetOfPoints& points)
    {
        int start = int(positions.size() / 3);
        const auto endChain = [&] {
            const int count = int(positions.size() / 3) - start;
            if (count > 1) {
                chainStarts.push_back(start);
                chainCounts.push_back(count);
            } else {
                positions.resize(3 * size_t(start));
            }
            start = int(positions.size() / 3);
        };
        for (const ZORMathPoint& point : points) {
            if (point.IsFinite())
                Add(point);
            else
                endChain();
        }
        endChain();
    }

    void AddPairs(const ZORMathSetOfPoints& points)
    {
        for (qsizetype i = 0; i + 1 < points.size(); i += 2) {
            if (points[i].IsFinite() && points[i + 1].IsFinite()) {
                Add(points[i]);
                Add(points[i + 1]);
            }
        }
    }

    void Add(const ZORMathPoint& point)
    {
        const ZORMathVector p = point - m_origin;
        positions.insert(positions.end(), {float(p.GetX()), float(p.GetY()), float(p.GetZ())});
    }

    const ZORMathPoint m_origin;
};

} // namespace

SO_NODE_SOURCE(ZORVisGlLines);

void ZORVisGlLines::initClass()
{
    SO_NODE_INIT_CLASS(ZORVisGlLines, ZORVisGlShape, "ZORVisGlShape");
}

ZORVisGlLines::ZORVisGlLines()
{
    SO_NODE_CONSTRUCTOR(ZORVisGlLines);
}

ZORVisGlLines::~ZORVisGlLines() = default;

bool ZORVisGlLines::Fill(const ZORVisRepItem& item, const ZORMathPoint& origin, const ZORVisGlMode* mode)
{
    m_mode = mode;
    LineArrays arrays(item, origin);
    if (arrays.positions.empty())
        return false;
    SetExtent(arrays.positions);
    m_positions = CreateBuffer(arrays.positions.data(), arrays.positions.size() * sizeof(float));
    m_chainStarts = std::move(arrays.chainStarts);
    m_chainCounts = std::move(arrays.chainCounts);
    m_firstPair = arrays.firstPair;
    m_numPairPoints = int(arrays.positions.size() / 3) - arrays.firstPair;
    for (size_t i = 0; i < m_chainStarts.size(); ++i) {
        if (m_chainCounts[i] > 2) {
            m_jointStarts.push_back(m_chainStarts[i] + 1);
            m_jointCounts.push_back(m_chainCounts[i] - 2);
        }
    }
    return true;
}

void ZORVisGlLines::SetOptions(const ZORVisOptions& options)
{
    m_thickness = options.GetDrawnThickness();
    m_pattern = ZORVisLinePattern(options.GetLineStyle());
}

void ZORVisGlLines::GLRender(SoGLRenderAction* action)
{
    const bool isOtherPass =
        m_mode->pass == ZORVisGlMode::Pass::Surfaces || m_mode->pass == ZORVisGlMode::Pass::Depth;
    if (isOtherPass || !shouldGLRender(action))
        return;
    SoState* state = action->getState();
    state->push();
    SoLazyElement::setLightModel(state, SoLazyElement::BASE_COLOR);
    SoMaterialBundle(action).sendFirst();

    glPushAttrib(GL_LINE_BIT | GL_POINT_BIT);
    const double width = m_thickness * m_mode->ratio;
    glLineWidth(float(width));
    if (m_pattern == 0xffff) {
        glDisable(GL_LINE_STIPPLE);
    } else {
        glEnable(GL_LINE_STIPPLE);
        glLineStipple(ZORVisLinePatternStep(width), m_pattern);
    }
    glBindBuffer(GL_ARRAY_BUFFER, m_positions);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glEnableClientState(GL_VERTEX_ARRAY);
    Draw();
    if (m_pattern == 0xffff && width >= kSmallestJoint)
        DrawJoints(width);
    glDisableClientState(GL_VERTEX_ARRAY);
    glPopAttrib();
    state->pop();
}

void ZORVisGlLines::Draw() const
{
    if (!m_chainStarts.empty()) {
        glMultiDrawArrays(GL_LINE_STRIP, m_chainStarts.data(), m_chainCounts.data(),
                          int(m_chainStarts.size()));
    }
    if (m_numPairPoints > 0)
        glDrawArrays(GL_LINES, m_firstPair, m_numPairPoints);
}

// Round spots that fill the notches between the segments of thick lines.
void ZORVisGlLines::DrawJoints(double width) const
{
    if (m_jointStarts.empty())
        return;
    glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT | GL_MULTISAMPLE_BIT);
    glBindTexture(GL_TEXTURE_2D, GetDiscTexture());
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_POINT_SPRITE);
    glTexEnvi(GL_POINT_SPRITE, GL_COORD_REPLACE, GL_TRUE);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_SAMPLE_ALPHA_TO_COVERAGE);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.5F);
    glPointSize(float(width));
    glMultiDrawArrays(GL_POINTS, m_jointStarts.data(), m_jointCounts.data(), int(m_jointStarts.size()));
    glPopAttrib();
}
