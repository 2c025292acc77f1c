// Scene graph of the objects of a scene.

#pragma once

#include "ZORVisFrameBuffer_p.h"
#include "ZORVisGlShape_p.h"
#include "scene/ZORVisDrawing_p.h"
#include "scene/ZORVisFrame_p.h"

#include <QRect>

#include <map>
#include <memory>
#include <set>

class SoDirectionalLight;
class SoGLRenderAction;
class SoMaterial;
class SoOrthographicCamera;
class SoSeparator;
class SoTranslation;
class ZORVisGlLines;
class ZORVisGlMesh;

/// Keeps the nodes of all objects and draws them with OpenGL. Update() and Draw() need the graphics context
/// to be current.
class ZORVisGlScene
{
public:
    ZORVisGlScene();
    ~ZORVisGlScene();
    Q_DISABLE_COPY_MOVE(ZORVisGlScene)

    /// The object of this key was added, changed or removed.
    void Touch(quint64 key) { m_touched.insert(key); }
    /// Brings the nodes up to date; new nodes for touched objects with other primitives only.
    void Update(const std::map<quint64, ZORVisDrawObject>& objects);

    /// Draws background, surfaces and lines of one tile of the picture, which is left in \a buffer.
    /// \return false where OpenGL cannot draw a tile of that size
    bool Draw(const ZORVisFrame& frame, const QRect& tile, ZORVisFrameBuffer& buffer);

private:
    /// The shapes of one item.
    struct Part
    {
        std::vector<std::shared_ptr<const ZORVisPrimitiveData>> primitives;
        SoMaterial* material = nullptr; // child of the separator, as are the shapes; null without shapes
        std::vector<ZORVisGlMesh*> meshes;
        ZORVisGlLines* lines = nullptr; // null without lines
    };
    struct Node
    {
        SoSeparator* separator = nullptr;     // owned by reference
        SoTranslation* translation = nullptr; // child of the separator
        ZORMathPoint origin;
        std::vector<Part> parts;
        bool isHidden = false;
    };
    void Draw(ZORVisGlMode::Pass pass);
    Node CreateNode(const ZORVisDrawObject& object);
    Part CreatePart(const ZORVisRepItem& item, const Node& node);
    /// Lets the shapes of a node look as the object does now.
    /// \return false where the object has other shapes
    static bool StyleNode(Node& node, const ZORVisDrawObject& object);
    void SetOrigin(const ZORVisFrame& frame);
    void PlaceNode(const Node& node);
    void SetCamera(const ZORVisFrame& frame, const QRect& tile);

    ZORVisGlMode m_mode;
    SoSeparator* m_root;            // owned by reference
    SoDirectionalLight* m_light;    // child of the root
    SoOrthographicCamera* m_camera; // child of the root
    SoSeparator* m_group;           // child of the root: the nodes of the objects
    std::unique_ptr<SoGLRenderAction> m_action;
    std::map<quint64, Node> m_nodes;
    std::set<quint64> m_touched;
    ZORMathPoint m_origin; // of the graph's coordinates; close to the target of the camera
};
