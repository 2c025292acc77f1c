// State of a scene that the renderers share.

#pragma once

#include "ZORVisDrawing_p.h"
#include "ZORVisFrame_p.h"

#include <ZORVisualization/ZORVisScene.h>

#include <QColor>
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

    /// What a scene knows about an owner.
    struct Owner
    {
        quint64 drawing = 0; // key of its drawing; 0: none
        ZORVisScene::Highlight highlight = ZORVisScene::Highlight::None;
        bool isHidden = false;
        QMetaObject::Connection destroyed;
    };

    void Add(ZORVisVirtualObject* object);
    void Remove(ZORVisVirtualObject* object);
    void Update(ZORVisVirtualObject* object);
    void Clear();
    void SetDrawing(QObject* owner, std::unique_ptr<ZORVisRep> rep);
    void RemoveDrawing(const QObject* owner);
    void SetHighlight(QObject* owner, ZORVisScene::Highlight highlight);
    void SetHidden(QObject* owner, bool isHidden);
    void SetHighlightColors(const QColor& selected, const QColor& hovered);
    Owner GetOwner(const QObject* owner) const { return m_owners.value(owner); }
    int GetNumDrawings() const { return m_numDrawings; }
    ZORMathBoundingBox GetBoundingBoxOf(const QObject* owner) const;
    ZORMathBoundingBox GetBoundingBox() const;
    ZORVisDrawList GetDrawList() const;
    /// Makes the graphics context current and brings the scene graph up to date.
    /// \return null without graphics context; owned by the scene
    ZORVisGlScene* PrepareGlScene();

    ZORVisScene* const q;
    QPointer<ZORVisEnvironment> environment;

private:
    void Touch(quint64 key);
    Owner& TakeOwner(QObject* owner);
    void DropDefault(const QObject* owner);
    QList<quint64> KeysOf(const QObject* owner) const;
    void Put(quint64 key, ZORVisDrawObject&& object);
    /// Lets an object look as its owner wants it to.
    void Style(ZORVisDrawObject& object) const;
    void StyleAll(const QObject* owner);

    std::map<quint64, ZORVisDrawObject> m_objects;
    std::unique_ptr<ZORVisGlScene> m_glScene; // made by the first picture with a graphics context
    QHash<const ZORVisVirtualObject*, quint64> m_keys;
    QMultiHash<const QObject*, quint64> m_keysOfOwner; // objects of the environment
    QHash<const QObject*, Owner> m_owners;             // those with something set
    int m_numDrawings = 0;
    QColor m_selectedColor{255, 140, 0};
    QColor m_hoveredColor{255, 215, 60};
    quint64 m_nextKey = 1;
    bool m_announced = false;
    mutable std::optional<ZORMathBoundingBox> m_box; // empty until somebody asks
};
