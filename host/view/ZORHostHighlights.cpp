#include "view/ZORHostHighlights.h"

#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORVisualization/ZORVisScene.h>

#include <QSet>

namespace {

constexpr int kRestMilliseconds = 150;

} // namespace

ZORHostHighlights::ZORHostHighlights(ZORHostView3D* view, ZORHostSelection* selection, const DrawnOf& drawnOf,
                                     QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_selection(selection)
    , m_drawnOf(drawnOf)
{
    m_hoverTimer.setSingleShot(true);
    connect(&m_hoverTimer, &QTimer::timeout, this, [this] {
        m_showsHovered = true;
        Apply();
    });
    connect(selection, &ZORHostSelection::Changed, this, &ZORHostHighlights::Apply);
    connect(selection, &ZORHostSelection::HoveredChanged, this, &ZORHostHighlights::OnHoveredChanged);
    connect(view, &ZORHostView3D::SceneChanged, this, &ZORHostHighlights::OnSceneChanged);
    Apply();
}

ZORHostHighlights::~ZORHostHighlights() = default;

void ZORHostHighlights::OnSceneChanged()
{
    if (m_view->GetScene() != m_scene)
        Apply();
}

// Whoever sweeps over many objects does not wait for a slow frame of each.
void ZORHostHighlights::OnHoveredChanged()
{
    m_showsHovered = false;
    m_hoverTimer.start(m_view && m_view->IsSlow() ? kRestMilliseconds : 0);
}

// What the environment shows for an object has that object as owner, its drawing may have another one.
QList<QPointer<QObject>> ZORHostHighlights::FindSeen(const QList<ZORGeoGeometry*>& objects) const
{
    const QList<ZORGeoGeometry*> all = objects + m_drawnOf(objects);
    return QList<QPointer<QObject>>(all.cbegin(), all.cend());
}

void ZORHostHighlights::Apply()
{
    ZORVisScene* const scene = m_view ? m_view->GetScene() : nullptr;
    if (scene != m_scene)
        m_highlighted.clear();
    m_scene = scene;
    if (!scene || !m_selection)
        return;
    QHash<QObject*, ZORVisScene::Highlight> wanted;
    if (ZORGeoGeometry* const hovered = m_selection->GetHovered(); hovered && m_showsHovered) {
        for (const QPointer<QObject>& object : FindSeen({hovered}))
            wanted.insert(object, ZORVisScene::Highlight::Hovered);
    }
    for (const QPointer<QObject>& object : FindSeen(m_selection->GetObjects()))
        wanted.insert(object, ZORVisScene::Highlight::Selected);
    for (const QPointer<QObject>& object : std::as_const(m_highlighted)) {
        if (object && !wanted.contains(object))
            scene->SetHighlight(object, ZORVisScene::Highlight::None);
    }
    m_highlighted.clear();
    for (auto entry = wanted.cbegin(); entry != wanted.cend(); ++entry) {
        scene->SetHighlight(entry.key(), entry.value());
        m_highlighted.append(entry.key());
    }
}
