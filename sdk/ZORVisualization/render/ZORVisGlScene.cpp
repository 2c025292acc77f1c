#include "ZORVisGlLines_p.h"
#include "ZORVisGlMesh_p.h"
#include "ZORVisGlScene_p.h"
#include "scene/ZORVisMeshData_p.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTranslation.h>
#include <algorithm>

using Pass = ZORVisGlMode::Pass;

namespace {

// The graph's coordinates are of single precision: its origin moves when the target is that many heights of
// the view away from it.
constexpr double kFarFromOrigin = 64;

constexpr double kDepthSteps = 1 << 24; // of the depth buffer

uint32_t GetCacheContext()
{
    static const uint32_t context = [] {
        ZORVisGlShape::initClass();
        ZORVisGlMesh::initClass();
        ZORVisGlLines::initClass();
        return SoGLCacheContextElement::getUniqueCacheContext();
    }();
    return context;
}

SoSeparator* CreateSeparator()
{
    auto* separator = new SoSeparator;
    separator->renderCaching = SoSeparator::OFF; // the buffers of the shapes are as fast as a display list
    separator->boundingBoxCaching = SoSeparator::OFF;
    separator->renderCulling = SoSeparator::OFF;
    separator->pickCulling = SoSeparator::OFF;
    return separator;
}

void SetColor(SoMaterial* material, const QColor& color)
{
    const SbVec3f rgb(float(color.redF()), float(color.greenF()), float(color.blueF()));
    material->diffuseColor = SbColor(rgb);
    material->ambientColor = SbColor(rgb * 1.5F); // of an ambient light of 0.2
    material->specularColor = SbColor(0.15F, 0.15F, 0.15F);
    material->shininess = 0.25F;
    material->transparency = float(1 - color.alphaF());
}

SbVec3f ToSb(const ZORMathVector& v)
{
    return {float(v.GetX()), float(v.GetY()), float(v.GetZ())};
}

// Rows of one colour are cleared together, which is exact, unlike an interpolated rectangle.
void DrawBackground(const ZORVisFrame& frame, const QRect& tile)
{
    glDisable(GL_SCISSOR_TEST);
    glDepthMask(GL_TRUE);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glClearDepth(1);
    glClear(GL_DEPTH_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    for (int first = tile.top(); first <= tile.bottom();) {
        const QRgb color = frame.GetRowColor(first);
        int end = first + 1;
        while (end <= tile.bottom() && frame.GetRowColor(end) == color)
            ++end;
        glScissor(0, tile.bottom() + 1 - end, tile.width(), end - first);
        glClearColor(float(qRed(color)) / 255, float(qGreen(color)) / 255, float(qBlue(color)) / 255, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        first = end;
    }
    glDisable(GL_SCISSOR_TEST);
}

} // namespace

ZORVisGlScene::ZORVisGlScene()
    : m_root(CreateSeparator())
    , m_light(new SoDirectionalLight)
    , m_camera(new SoOrthographicCamera)
    , m_group(CreateSeparator())
    , m_action(std::make_unique<SoGLRenderAction>(SbViewportRegion(1, 1)))
{
    m_action->setCacheContext(GetCacheContext());
    m_action->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);

    m_root->ref();
    m_root->addChild(m_light); // before the camera: it stays with the viewer
    m_light->direction = SbVec3f(0.15F, -0.25F, -1);
    m_light->intensity = 0.8F;
    m_root->addChild(m_camera);
    m_camera->viewportMapping = SoCamera::LEAVE_ALONE;
    auto* hints = new SoShapeHints; // lit on both sides, no side is left out
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    hints->shapeType = SoShapeHints::UNKNOWN_SHAPE_TYPE;
    m_root->addChild(hints);
    m_root->addChild(m_group);
}

ZORVisGlScene::~ZORVisGlScene()
{
    for (auto& [key, node] : m_nodes)
        node.separator->unref();
    m_root->unref();
}

void ZORVisGlScene::Update(const std::map<quint64, ZORVisDrawObject>& objects)
{
    if (m_touched.empty())
        return;
    for (const quint64 key : m_touched) {
        const auto object = objects.find(key);
        if (const auto old = m_nodes.find(key); old != m_nodes.end()) {
            if (object != objects.end() && StyleNode(old->second, object->second))
                continue;
            old->second.separator->unref();
            m_nodes.erase(old);
        }
        if (object != objects.end())
            m_nodes.emplace(key, CreateNode(object->second));
    }
    m_touched.clear();

    m_group->enableNotify(FALSE);
    m_group->removeAllChildren();
    for (const auto& [key, node] : m_nodes) {
        if (!node.isHidden)
            m_group->addChild(node.separator);
    }
    m_group->enableNotify(TRUE);
    m_group->touch();
}

ZORVisGlScene::Node ZORVisGlScene::CreateNode(const ZORVisDrawObject& object)
{
    Node node{CreateSeparator(), new SoTranslation, object.box.GetCenter(), {}};
    node.separator->ref();
    node.separator->addChild(node.translation);
    for (const auto& item : object.items)
        node.parts.push_back(CreatePart(*item, node));
    StyleNode(node, object);
    PlaceNode(node);
    return node;
}

ZORVisGlScene::Part ZORVisGlScene::CreatePart(const ZORVisRepItem& item, const Node& node)
{
    Part part;
    part.primitives = item.primitives;
    const auto add = [&](SoNode* shape) {
        if (!part.material) {
            part.material = new SoMaterial;
            node.separator->addChild(part.material);
        }
        node.separator->addChild(shape);
    };
    ZORVisForEach<ZORVisMeshData, ZORVisPrimitiveKind::Mesh>(item, [&](const ZORVisMeshData& mesh) {
        auto* shape = new ZORVisGlMesh;
        shape->Fill(mesh, node.origin, &m_mode);
        add(shape);
        part.meshes.push_back(shape);
    });
    auto* lines = new ZORVisGlLines;
    lines->ref();
    if (lines->Fill(item, node.origin, &m_mode)) {
        add(lines);
        part.lines = lines;
    }
    lines->unref();
    return part;
}

bool ZORVisGlScene::StyleNode(Node& node, const ZORVisDrawObject& object)
{
    const bool isSame =
        std::equal(node.parts.begin(), node.parts.end(), object.items.begin(), object.items.end(),
                   [](const Part& part, const auto& item) { return part.primitives == item->primitives; });
    if (!isSame)
        return false;
    node.isHidden = object.isHidden;
    for (size_t i = 0; i < node.parts.size(); ++i) {
        const ZORVisOptions& options = object.items[i]->options;
        const Part& part = node.parts[i];
        if (part.material)
            SetColor(part.material, options.GetDrawnColor());
        for (ZORVisGlMesh* mesh : part.meshes)
            mesh->SetOptions(options);
        if (part.lines)
            part.lines->SetOptions(options);
    }
    return true;
}

void ZORVisGlScene::PlaceNode(const Node& node)
{
    node.translation->translation = ToSb(node.origin - m_origin);
}

void ZORVisGlScene::SetOrigin(const ZORVisFrame& frame)
{
    const ZORMathPoint target = frame.camera.GetTarget();
    if (target.DistanceTo(m_origin) <= kFarFromOrigin * frame.camera.GetHeight())
        return;
    m_origin = target;
    for (const auto& [key, node] : m_nodes)
        PlaceNode(node);
}

void ZORVisGlScene::SetCamera(const ZORVisFrame& frame, const QRect& tile)
{
    const ZORMathVector toTile =
        (tile.x() + (tile.width() - frame.size.width()) / 2.0) * frame.pixelSize * frame.right
        - (tile.y() + (tile.height() - frame.size.height()) / 2.0) * frame.pixelSize * frame.up;
    const ZORMathVector back = -frame.direction;
    const SbMatrix axes(float(frame.right.GetX()), float(frame.right.GetY()), float(frame.right.GetZ()), 0,
                        float(frame.up.GetX()), float(frame.up.GetY()), float(frame.up.GetZ()), 0,
                        float(back.GetX()), float(back.GetY()), float(back.GetZ()), 0, 0, 0, 0, 1);
    m_camera->position = ToSb(frame.camera.GetTarget() + toTile - m_origin);
    m_camera->orientation = SbRotation(axes);
    m_camera->height = float(tile.height() * frame.pixelSize);
    m_camera->aspectRatio = float(tile.width()) / float(tile.height());
    m_camera->nearDistance = float(frame.nearDistance);
    m_camera->farDistance = float(frame.farDistance);
}

bool ZORVisGlScene::Draw(const ZORVisFrame& frame, const QRect& tile, ZORVisFrameBuffer& buffer)
{
    if (!buffer.Bind(tile.size(), frame.samples))
        return false;
    glViewport(0, 0, tile.width(), tile.height());
    DrawBackground(frame, tile);
    if (m_nodes.empty())
        return true;

    m_mode = {Pass::All, frame.ratio, frame.wireframe, frame.GetPushBack() * kDepthSteps,
              frame.GetLinePushBackFactor()};
    SetOrigin(frame);
    SetCamera(frame, tile);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_NORMALIZE);
    m_action->setViewportRegion(SbViewportRegion(short(tile.width()), short(tile.height())));
    if (frame.lineWidth == 0) {
        Draw(Pass::All);
        return true;
    }
    // Surfaces hide each other by their own depth, and lines by that of surfaces that give way to them.
    Draw(Pass::Surfaces);
    glDepthMask(GL_TRUE);
    glClear(GL_DEPTH_BUFFER_BIT);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    Draw(Pass::Depth);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    Draw(Pass::Rest);
    return true;
}

void ZORVisGlScene::Draw(ZORVisGlMode::Pass pass)
{
    m_mode.pass = pass;
    m_action->apply(m_root);
}
