#include "ZORVisScene.h"

#include "render/ZORVisGlScene_p.h"
#include "scene/ZORVisScene_p.h"

#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <utility>

ZORVisScenePrivate::ZORVisScenePrivate(ZORVisScene* scene, ZORVisEnvironment* followed)
    : q(scene)
    , environment(followed)
{
}

ZORVisScenePrivate::~ZORVisScenePrivate() = default;

void ZORVisScenePrivate::Add(ZORVisVirtualObject* object)
{
    const quint64 key = m_nextKey++;
    m_keys.insert(object, key);
    if (const QObject* const owner = object->GetOwner())
        m_keysOfOwner.insert(owner, key);
    Update(object);
}

void ZORVisScenePrivate::Update(ZORVisVirtualObject* object)
{
    if (const quint64 key = m_keys.value(object); key != 0)
        Put(key, ZORVisDrawObject(object->GetRep(), object));
}

void ZORVisScenePrivate::Put(quint64 key, ZORVisDrawObject&& object)
{
    Style(object);
    m_objects.insert_or_assign(key, std::move(object));
    Touch(key);
}

void ZORVisScenePrivate::Remove(ZORVisVirtualObject* object)
{
    const quint64 key = m_keys.take(object);
    const auto found = m_objects.find(key);
    if (found == m_objects.end())
        return;
    m_keysOfOwner.remove(found->second.key, key);
    m_objects.erase(found);
    Touch(key);
}

void ZORVisScenePrivate::Clear()
{
    for (const quint64 key : std::as_const(m_keys))
        m_objects.erase(key);
    m_keys.clear();
    m_keysOfOwner.clear();
    m_glScene.reset();
    Touch(0);
}

void ZORVisScenePrivate::SetDrawing(QObject* owner, std::unique_ptr<ZORVisRep> rep)
{
    if (!owner)
        return;
    if (!rep) {
        RemoveDrawing(owner);
        return;
    }
    Owner& state = TakeOwner(owner);
    if (state.drawing == 0) {
        state.drawing = m_nextKey++;
        ++m_numDrawings;
    }
    ZORVisDrawObject drawing(rep.get(), nullptr);
    drawing.owner = owner;
    drawing.key = owner;
    Put(state.drawing, std::move(drawing));
}

void ZORVisScenePrivate::RemoveDrawing(const QObject* owner)
{
    const auto state = m_owners.find(owner);
    if (state == m_owners.end() || state->drawing == 0)
        return;
    const quint64 key = std::exchange(state->drawing, 0);
    --m_numDrawings;
    m_objects.erase(key);
    Touch(key);
    DropDefault(owner);
}

void ZORVisScenePrivate::SetHighlight(QObject* owner, ZORVisScene::Highlight highlight)
{
    if (!owner || GetOwner(owner).highlight == highlight)
        return;
    TakeOwner(owner).highlight = highlight;
    StyleAll(owner);
    DropDefault(owner);
}

void ZORVisScenePrivate::SetHidden(QObject* owner, bool isHidden)
{
    if (!owner || GetOwner(owner).isHidden == isHidden)
        return;
    TakeOwner(owner).isHidden = isHidden;
    StyleAll(owner);
    DropDefault(owner);
}

void ZORVisScenePrivate::SetHighlightColors(const QColor& selected, const QColor& hovered)
{
    if (selected.isValid())
        m_selectedColor = selected;
    if (hovered.isValid())
        m_hoveredColor = hovered;
    for (auto owner = m_owners.cbegin(); owner != m_owners.cend(); ++owner) {
        if (owner->highlight != ZORVisScene::Highlight::None)
            StyleAll(owner.key());
    }
}

ZORVisScenePrivate::Owner& ZORVisScenePrivate::TakeOwner(QObject* owner)
{
    Owner& state = m_owners[owner];
    if (!state.destroyed) {
        // By its address: there is nothing left of the object but that.
        state.destroyed = QObject::connect(owner, &QObject::destroyed, q, [this, address = owner] {
            RemoveDrawing(address);
            m_owners.remove(address);
        });
    }
    return state;
}

// Owners about which nothing is known are not followed.
void ZORVisScenePrivate::DropDefault(const QObject* owner)
{
    const auto state = m_owners.find(owner);
    if (state == m_owners.end() || state->drawing != 0 || state->isHidden
        || state->highlight != ZORVisScene::Highlight::None)
        return;
    QObject::disconnect(state->destroyed);
    m_owners.erase(state);
}

QList<quint64> ZORVisScenePrivate::KeysOf(const QObject* owner) const
{
    QList<quint64> keys = m_keysOfOwner.values(owner);
    if (const quint64 drawing = GetOwner(owner).drawing; drawing != 0)
        keys.append(drawing);
    return keys;
}

void ZORVisScenePrivate::Style(ZORVisDrawObject& object) const
{
    constexpr double kSelectedMixing = 0.55;
    constexpr double kHoveredMixing = 0.35;
    // The owner of an object of the environment may have died, and another one live at its address.
    const QObject* const owner = object.object ? object.object->GetOwner() : object.owner;
    const Owner state = GetOwner(owner);
    object.isHidden = object.object && state.isHidden;
    if (state.highlight == ZORVisScene::Highlight::Selected)
        object.SetHighlight(m_selectedColor, kSelectedMixing);
    else if (state.highlight == ZORVisScene::Highlight::Hovered)
        object.SetHighlight(m_hoveredColor, kHoveredMixing);
    else
        object.SetHighlight(QColor(), 0);
}

void ZORVisScenePrivate::StyleAll(const QObject* owner)
{
    const QList<quint64> keys = KeysOf(owner);
    for (const quint64 key : keys) {
        Style(m_objects.at(key));
        Touch(key);
    }
}

ZORMathBoundingBox ZORVisScenePrivate::GetBoundingBoxOf(const QObject* owner) const
{
    ZORMathBoundingBox box;
    const QList<quint64> keys = KeysOf(owner);
    for (const quint64 key : keys)
        box.Add(m_objects.at(key).box);
    return box;
}

void ZORVisScenePrivate::Touch(quint64 key)
{
    m_box.reset();
    if (m_glScene)
        m_glScene->Touch(key);
    if (m_announced)
        return;
    m_announced = true;
    QMetaObject::invokeMethod(
        q,
        [this] {
            m_announced = false;
            emit q->Changed();
        },
        Qt::QueuedConnection);
}

ZORMathBoundingBox ZORVisScenePrivate::GetBoundingBox() const
{
    if (!m_box) {
        m_box.emplace();
        for (const auto& [key, object] : m_objects) {
            if (!object.isHidden)
                m_box->Add(object.box);
        }
    }
    return *m_box;
}

ZORVisDrawList ZORVisScenePrivate::GetDrawList() const
{
    ZORVisDrawList list;
    list.reserve(m_objects.size());
    for (const auto& [key, object] : m_objects) {
        if (!object.isHidden)
            list.push_back(&object);
    }
    return list;
}

ZORVisGlScene* ZORVisScenePrivate::PrepareGlScene()
{
    if (!ZORVisGraphicsContext::GetInstance()->MakeCurrent())
        return nullptr;
    if (!m_glScene) {
        m_glScene = std::make_unique<ZORVisGlScene>();
        for (const auto& [key, object] : m_objects)
            m_glScene->Touch(key);
    }
    m_glScene->Update(m_objects);
    return m_glScene.get();
}

ZORVisScene::ZORVisScene(ZORVisEnvironment* environment, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<ZORVisScenePrivate>(this, environment))
{
    if (!environment)
        return;
    const QList<ZORVisVirtualObject*> objects = environment->GetVirtualObjects();
    for (ZORVisVirtualObject* object : objects)
        d->Add(object);
    connect(environment, &ZORVisEnvironment::ObjectAdded, this,
            [this](ZORVisVirtualObject* object) { d->Add(object); });
    connect(environment, &ZORVisEnvironment::ObjectRemoved, this,
            [this](ZORVisVirtualObject* object) { d->Remove(object); });
    connect(environment, &ZORVisEnvironment::ObjectChanged, this,
            [this](ZORVisVirtualObject* object) { d->Update(object); });
    connect(environment, &QObject::destroyed, this, [this] { d->Clear(); });
}

ZORVisScene::~ZORVisScene() = default;

ZORVisEnvironment* ZORVisScene::GetEnvironment() const
{
    return d->environment;
}

ZORMathBoundingBox ZORVisScene::GetBoundingBox() const
{
    return d->GetBoundingBox();
}

void ZORVisScene::SetDrawing(QObject* owner, std::unique_ptr<ZORVisRep> rep)
{
    d->SetDrawing(owner, std::move(rep));
}

void ZORVisScene::RemoveDrawing(const QObject* owner)
{
    d->RemoveDrawing(owner);
}

bool ZORVisScene::HasDrawing(const QObject* owner) const
{
    return d->GetOwner(owner).drawing != 0;
}

int ZORVisScene::GetNumDrawings() const
{
    return d->GetNumDrawings();
}

ZORMathBoundingBox ZORVisScene::GetBoundingBoxOf(const QObject* owner) const
{
    return d->GetBoundingBoxOf(owner);
}

void ZORVisScene::SetHighlight(QObject* owner, Highlight highlight)
{
    d->SetHighlight(owner, highlight);
}

ZORVisScene::Highlight ZORVisScene::GetHighlight(const QObject* owner) const
{
    return d->GetOwner(owner).highlight;
}

void ZORVisScene::SetHighlightColors(const QColor& selected, const QColor& hovered)
{
    d->SetHighlightColors(selected, hovered);
}

void ZORVisScene::SetHidden(QObject* owner, bool isHidden)
{
    d->SetHidden(owner, isHidden);
}

bool ZORVisScene::IsHidden(const QObject* owner) const
{
    return d->GetOwner(owner).isHidden;
}
