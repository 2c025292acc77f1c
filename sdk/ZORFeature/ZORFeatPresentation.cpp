#include "ZORFeatPresentation.h"

#include "ZORFeatDrawing_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORVisualization/ZORVisScene.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QElapsedTimer>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QThreadPool>
#include <QTimer>

#include <deque>
#include <new>
#include <utility>

namespace {

constexpr qint64 kSliceMilliseconds = 8;

} // namespace

class ZORFeatPresentation::Private
{
public:
    Private(ZORFeatPresentation* presentation, ZORFeatEnvironment* shown, ZORVisScene* drawnScene);

    void FollowContainer();
    void FollowEnvironment();
    void Touch(const ZORGeoGeometry* object);
    void TouchDrawn(const ZORGeoGeometry* shape);
    void Forget(const ZORGeoGeometry* object);
    void DrawSlice();
    void RemoveAll();
    ZORGeoGeometry* GetDrawn(const ZORGeoGeometry* object) const;

    ZORFeatPresentation* const q;
    QPointer<ZORFeatEnvironment> environment;
    QPointer<ZORFeatContainer> container;
    QPointer<ZORVisScene> scene;
    QThreadPool threads;
    bool isUpToDate = true;

private:
    struct Shown
    {
        QList<const ZORGeoGeometry*> shapes;     // for comparison only
        std::shared_ptr<ZORFeatDrawing> drawing; // null while a thread completes it
        quint64 version = 0;                     // of the last one that was begun
        bool isStale = false;                    // a shape has changed in place
        QList<QMetaObject::Connection> connections;
    };

    void AddVisual(const ZORVisVirtualObject* object);
    void RemoveVisual(const ZORVisVirtualObject* object);
    void Draw(ZORGeoGeometry* object);
    void Begin(ZORGeoGeometry* object, const ZORFeatSketch& sketch);
    void Finish(ZORGeoGeometry* object, quint64 version, const std::shared_ptr<ZORFeatDrawing>& drawing);
    void Put(ZORGeoGeometry* object, const ZORFeatDrawing& drawing);
    void Remove(const ZORGeoGeometry* object);
    void Release(Shown& shown, const ZORGeoGeometry* object);
    bool IsVisualized(const ZORGeoGeometry* shape) const { return m_numVisuals.contains(shape); }
    void CheckUpToDate();

    QTimer m_timer;
    std::deque<QPointer<ZORGeoGeometry>> m_queue;
    QSet<const ZORGeoGeometry*> m_queued;
    QHash<const ZORGeoGeometry*, Shown> m_shown;                        // by drawn object
    QHash<const ZORGeoGeometry*, const ZORGeoGeometry*> m_shapes;       // drawn object by shape
    QHash<const ZORVisVirtualObject*, const ZORGeoGeometry*> m_visuals; // for comparison only
    QHash<const ZORGeoGeometry*, int> m_numVisuals;
    quint64 m_lastVersion = 0;
    int m_numRunning = 0;
};

ZORFeatPresentation::Private::Private(ZORFeatPresentation* presentation, ZORFeatEnvironment* shown,
                                      ZORVisScene* drawnScene)
    : q(presentation)
    , environment(shown)
    , container(shown ? shown->GetContainer() : nullptr)
    , scene(drawnScene)
{
    threads.setMaxThreadCount(1); // one after the other: they share the memory and the bus
    m_timer.setInterval(0);
    QObject::connect(&m_timer, &QTimer::timeout, q, [this] { DrawSlice(); });
}

void ZORFeatPresentation::Private::FollowContainer()
{
    if (!container)
        return;
    QObject::connect(container, &ZORGeoContainer::GeometryAdded, q, [this](ZORGeoGeometry* geometry) {
        if (const auto* const feature = qobject_cast<const ZORFeatGeometry*>(geometry))
            QObject::connect(feature, &ZORFeatGeometry::BodyChanged, q, [this, feature] { Touch(feature); });
        Touch(geometry);
    });
    QObject::connect(container, &ZORGeoContainer::GeometryAboutToBeRemoved, q,
                     [this](ZORGeoGeometry* geometry) { Forget(geometry); });
    QObject::connect(container->GetStyles(), &ZORFeatStyles::Changed, q,
                     [this](ZORGeoGeometry* object) { Touch(object); });
    QObject::connect(container, &QObject::destroyed, q, [this] { RemoveAll(); });
    for (int i = 0; i < container->GetNumGeometry(); ++i) {
        ZORGeoGeometry* const geometry = container->GetGeometryByIndex(i);
        if (const auto* const feature = qobject_cast<const ZORFeatGeometry*>(geometry))
            QObject::connect(feature, &ZORFeatGeometry::BodyChanged, q, [this, feature] { Touch(feature); });
        Touch(geometry);
    }
}

void ZORFeatPresentation::Private::FollowEnvironment()
{
    if (!environment)
        return;
    QObject::connect(environment, &ZORVisEnvironment::ObjectAdded, q,
                     [this](ZORVisVirtualObject* object) { AddVisual(object); });
    QObject::connect(environment, &ZORVisEnvironment::ObjectRemoved, q,
                     [this](ZORVisVirtualObject* object) { RemoveVisual(object); });
    const QList<ZORVisVirtualObject*> objects = environment->GetVirtualObjects();
    for (const ZORVisVirtualObject* object : objects)
        AddVisual(object);
}

void ZORFeatPresentation::Private::AddVisual(const ZORVisVirtualObject* object)
{
    // Objects that follow a geometry may have no owner.
    const auto* geometry = qobject_cast<const ZORGeoGeometry*>(object->GetOwner());
    if (!geometry)
        geometry = object->GetFollowedGeometry();
    if (!geometry)
        return;
    m_visuals.insert(object, geometry);
    ++m_numVisuals[geometry];
    TouchDrawn(geometry);
}

void ZORFeatPresentation::Private::RemoveVisual(const ZORVisVirtualObject* object)
{
    const ZORGeoGeometry* const geometry = m_visuals.take(object);
    const auto count = m_numVisuals.find(geometry);
    if (count == m_numVisuals.end() || --*count > 0) // the geometry may have gone first
        return;
    m_numVisuals.erase(count);
    TouchDrawn(geometry);
}

void ZORFeatPresentation::Private::Touch(const ZORGeoGeometry* object)
{
    if (!object || m_queued.contains(object))
        return;
    m_queued.insert(object);
    m_queue.emplace_back(const_cast<ZORGeoGeometry*>(object));
    isUpToDate = false;
    if (!m_timer.isActive())
        m_timer.start();
}

void ZORFeatPresentation::Private::TouchDrawn(const ZORGeoGeometry* shape)
{
    Touch(GetDrawn(shape));
}

// Called by the destructor of a geometry, too: only its address is good.
void ZORFeatPresentation::Private::Forget(const ZORGeoGeometry* object)
{
    m_numVisuals.remove(object);
    if (const ZORGeoGeometry* const drawn = m_shapes.value(object); drawn && drawn != object)
        Touch(drawn);
    Remove(object);
    m_queued.remove(object);
}

void ZORFeatPresentation::Private::DrawSlice()
{
    QElapsedTimer timer;
    timer.start();
    while (!m_queue.empty() && timer.elapsed() < kSliceMilliseconds) {
        const QPointer<ZORGeoGeometry> object = m_queue.front();
        m_queue.pop_front();
        if (object && m_queued.remove(object))
            Draw(object);
    }
    if (m_queue.empty())
        m_timer.stop();
    CheckUpToDate();
}

void ZORFeatPresentation::Private::CheckUpToDate()
{
    if (isUpToDate || !m_queue.empty() || m_numRunning > 0)
        return;
    isUpToDate = true;
    emit q->UpToDate();
}

void ZORFeatPresentation::Private::Draw(ZORGeoGeometry* object)
{
    if (!container || !scene)
        return;
    ZORFeatSketch sketch;
    if (!container->GetOwner(object) && container->GetStyles()->Get(object).IsVisible())
        sketch = ZORFeatSketch::Of(object);
    sketch.geometry.removeIf([this](const ZORGeoGeometry* shape) { return IsVisualized(shape); });
    for (const ZORGeoGeometry* shape : std::as_const(sketch.geometry)) {
        if (shape != object && m_shown.contains(shape)) // before it belonged to the feature
            Remove(shape);
    }
    const auto shown = m_shown.find(object);
    if (sketch.geometry.isEmpty())
        Remove(object);
    else if (shown == m_shown.end() || shown->isStale || shown->shapes != sketch.geometry)
        Begin(object, sketch);
    else if (shown->drawing)
        Put(object, *shown->drawing);
}

void ZORFeatPresentation::Private::Begin(ZORGeoGeometry* object, const ZORFeatSketch& sketch)
{
    Shown& shown = m_shown[object];
    Release(shown, object);
    shown.shapes = sketch.geometry;
    shown.isStale = false;
    shown.drawing.reset();
    const quint64 version = shown.version = ++m_lastVersion;
    for (const ZORGeoGeometry* shape : sketch.geometry) {
        m_shapes.insert(shape, object);
        shown.connections.append(QObject::connect(shape, &ZORGeoGeometry::ShapeChanged, q, [this, object] {
            if (const auto changed = m_shown.find(object); changed != m_shown.end())
                changed->isStale = true;
            Touch(object);
        }));
    }
    const auto drawing = std::make_shared<ZORFeatDrawing>(sketch);
    if (!drawing->IsLarge()) {
        drawing->Complete();
        Finish(object, version, drawing);
        return;
    }
    ++m_numRunning;
    threads.start([this, guard = QPointer<ZORGeoGeometry>(object), version, drawing] {
        bool isComplete = true;
        try {
            drawing->Complete();
        } catch (const std::bad_alloc&) {
            isComplete = false; // the object stays without a drawing
        }
        QMetaObject::invokeMethod(
            q,
            [this, guard, version, drawing = isComplete ? drawing : nullptr] {
                --m_numRunning;
                if (guard && drawing)
                    Finish(guard, version, drawing);
                CheckUpToDate();
            },
            Qt::QueuedConnection);
    });
}

void ZORFeatPresentation::Private::Finish(ZORGeoGeometry* object, quint64 version,
                                          const std::shared_ptr<ZORFeatDrawing>& drawing)
{
    const auto shown = m_shown.find(object);
    if (shown == m_shown.end() || shown->version != version) // removed or restarted meanwhile
        return;
    shown->drawing = drawing;
    Put(object, *drawing);
}

void ZORFeatPresentation::Private::Put(ZORGeoGeometry* object, const ZORFeatDrawing& drawing)
{
    if (scene && container)
        scene->SetDrawing(object, drawing.MakeRep(container->GetStyles()->Get(object)));
}

void ZORFeatPresentation::Private::Release(Shown& shown, const ZORGeoGeometry* object)
{
    for (const QMetaObject::Connection& connection : std::as_const(shown.connections))
        QObject::disconnect(connection);
    shown.connections.clear();
    for (const ZORGeoGeometry* shape : std::as_const(shown.shapes)) {
        if (m_shapes.value(shape) == object)
            m_shapes.remove(shape);
    }
}

void ZORFeatPresentation::Private::Remove(const ZORGeoGeometry* object)
{
    const auto shown = m_shown.find(object);
    if (shown == m_shown.end())
        return;
    Release(*shown, object);
    m_shown.erase(shown);
    if (scene)
        scene->RemoveDrawing(object);
}

void ZORFeatPresentation::Private::RemoveAll()
{
    m_queue.clear();
    m_queued.clear();
    const QList<const ZORGeoGeometry*> objects = m_shown.keys();
    for (const ZORGeoGeometry* object : objects)
        Remove(object);
    m_timer.stop();
    CheckUpToDate();
}

ZORGeoGeometry* ZORFeatPresentation::Private::GetDrawn(const ZORGeoGeometry* object) const
{
    if (!container || !object || object->GetContainer() != container)
        return nullptr;
    if (ZORFeatGeometry* const owner = container->GetOwner(object))
        return GetDrawn(owner);
    auto* const itself = const_cast<ZORGeoGeometry*>(object);
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
    const auto* const body = feature ? feature->GetBody() : qobject_cast<const ZORTopBody*>(object);
    if (!ZORFeatSketch::Of(object).geometry.isEmpty())
        return itself;
    const QList<const ZORGeoGeometry*> geometries =
        body ? body->GetGeometries() : QList<const ZORGeoGeometry*>();
    return geometries.isEmpty() ? nullptr : GetDrawn(geometries.first());
}

ZORFeatPresentation::ZORFeatPresentation(ZORFeatEnvironment* environment, ZORVisScene* scene, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, environment, scene))
{
    d->FollowEnvironment();
    d->FollowContainer();
}

ZORFeatPresentation::~ZORFeatPresentation()
{
    d->threads.waitForDone();
    d->RemoveAll();
}

bool ZORFeatPresentation::IsUpToDate() const
{
    return d->isUpToDate;
}

ZORGeoGeometry* ZORFeatPresentation::GetDrawn(const ZORGeoGeometry* object) const
{
    return d->GetDrawn(object);
}
