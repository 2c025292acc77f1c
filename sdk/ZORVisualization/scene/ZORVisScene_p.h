// State of a scene that the renderers share.

#pragma once

#include "ZORVisDrawing_p.h"
#include "ZORVisFrame_p.h"

#include <ZORVisualization/ZORVisScene.h>

#include <QHash>
#include <QPointer>

#include <map>
#include <optional>
#include <vector>

class ZORVisEnvironment;
class ZORVisGlScene;

/// Objects to draw, by a number that grows with every object, so that their order is that of the environment.
class ZORVisScenePrivate
{
public:
    ZORVisScenePrivate(ZORVisScene* scene, ZORVisEnvironment* followed);
    ~ZORVisScenePrivate();

    void Add(ZORVisVirtualObject* object);
    void Remove(ZORVisVirtualObject* object);
    void Update(ZORVisVirtualObject* object);
    void Clear();
    ZORMathBoundingBox GetBoundingBox() const;
    ZORVisDrawList GetDrawList() const;
    /// Makes the graphics context current and brings the scene graph up to date.
    /// \return null without graphics context; owned by the scene
    ZORVisGlScene* PrepareGlScene();

    ZORVisScene* const q;
    QPointer<ZORVisEnvironment> environment;

private:
    void Touch(quint64 key);

    std::map<quint64, ZORVisDrawObject> m_objects;
    std::unique_ptr<ZORVisGlScene> m_glScene; // made by the first picture with a graphics context
    QHash<const ZORVisVirtualObject*, quint64> m_keys;
    quint64 m_nextKey = 1;
    bool m_announced = false;
    mutable std::optional<ZORMathBoundingBox> m_box; // empty until somebody asks
};
