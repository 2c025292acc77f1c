// State of a scene that the renderers share.

#pragma once

#include "ZORVisDrawing_p.h"

#include <ZORVisualization/ZORVisScene.h>

#include <QHash>
#include <QPointer>

#include <map>
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

    ZORVisScene* const q;
    QPointer<ZORVisEnvironment> environment;
    std::map<quint64, ZORVisDrawObject> objects;
    std::unique_ptr<ZORVisGlScene> glScene; // made by the first picture with a graphics context

private:
    void Touch(quint64 key);

    QHash<const ZORVisVirtualObject*, quint64> m_keys;
    quint64 m_nextKey = 1;
    bool m_announced = false;
    mutable bool m_boxKnown = false;
    mutable ZORMathBoundingBox m_box;
};
