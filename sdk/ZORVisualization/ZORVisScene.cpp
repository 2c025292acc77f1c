#include "ZORVisScene.h"

#include "render/ZORVisGlScene_p.h"
#include "scene/ZORVisScene_p.h"

#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

ZORVisScenePrivate::ZORVisScenePrivate(ZORVisScene* scene, ZORVisEnvironment* followed)
    : q(scene)
    , environment(followed)
{
}

ZORVisScenePrivate::~ZORVisScenePrivate() = default;

void ZORVisScenePrivate::Add(ZORVisVirtualObject* object)
{
    m_keys.insert(object, m_nextKey++);
    Update(object);
}

void ZORVisScenePrivate::Update(ZORVisVirtualObject* object)
{
    const quint64 key = m_keys.value(object);
    if (key == 0)
        return;
    m_objects.insert_or_assign(key, ZORVisDrawObject(object->GetRep(), object));
    Touch(key);
}

void ZORVisScenePrivate::Remove(ZORVisVirtualObject* object)
{
    const quint64 key = m_keys.take(object);
    if (key == 0)
        return;
    m_objects.erase(key);
    Touch(key);
}

void ZORVisScenePrivate::Clear()
{
    m_keys.clear();
    m_objects.clear();
    m_glScene.reset();
    Touch(0);
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
        for (const auto& [key, object] : m_objects)
            m_box->Add(object.box);
    }
    return *m_box;
}

ZORVisDrawList ZORVisScenePrivate::GetDrawList() const
{
    ZORVisDrawList list;
    list.reserve(m_objects.size());
    for (const auto& [key, object] : m_objects)
        list.push_back(&object);
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
