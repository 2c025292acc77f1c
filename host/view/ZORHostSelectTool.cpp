#include "view/ZORHostSelectTool.h"

#include "view/ZORHostDisplayName.h"
#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"
#include "view/ZORHostViewMarks.h"

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORVisualization/ZORVisScene.h>

#include <QKeyEvent>

ZORHostSelectTool::ZORHostSelectTool(ZORHostView3D* view, ZORHostSelection* selection, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_selection(selection)
{
    view->SetTool(this);
    connect(selection, &ZORHostSelection::Changed, this, &ZORHostSelectTool::OnSelectionChanged);
    connect(view, &ZORHostView3D::SceneChanged, this, &ZORHostSelectTool::OnSceneChanged);
}

ZORHostSelectTool::~ZORHostSelectTool() = default;

// What stands for no object of the document belongs to no kind.
bool ZORHostSelectTool::Accepts(QObject* owner) const
{
    return m_selection->GetFilter() == kZORHostAllObjectKinds
           || m_selection->Accepts(qobject_cast<ZORGeoGeometry*>(owner));
}

void ZORHostSelectTool::Hover(const QPointF& position)
{
    const ZORVisPickResult hit = m_view->PickAt(position, [this](QObject* owner) { return Accepts(owner); });
    m_selection->SetHovered(qobject_cast<ZORGeoGeometry*>(hit.owner));
}

void ZORHostSelectTool::Leave()
{
    if (m_selection)
        m_selection->SetHovered(nullptr);
}

void ZORHostSelectTool::Click(const QPointF& position, Qt::KeyboardModifiers modifiers)
{
    const ZORVisPickResult hit = m_view->PickAt(position, [this](QObject* owner) { return Accepts(owner); });
    if (!hit.IsHit()) {
        if (!modifiers.testFlag(Qt::ControlModifier) && !modifiers.testFlag(Qt::ShiftModifier)) {
            m_selection->Clear();
            ClearPick();
        }
        return;
    }
    m_isPicked = false; // the new mark takes the place of the old one
    Select(qobject_cast<ZORGeoGeometry*>(hit.owner), modifiers);
    m_isPicked = true;
    m_pickedOwner = hit.owner;
    m_pickedPoint = hit.point;
    m_pickedName = ZORHostDisplayName(hit.owner);
    m_view->update();
    emit Picked(hit.owner, m_pickedName, hit.point);
    OnSelectionChanged(); // Ctrl may have taken it away
}

void ZORHostSelectTool::Select(ZORGeoGeometry* object, Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::ControlModifier))
        m_selection->Toggle({object});
    else if (modifiers.testFlag(Qt::ShiftModifier))
        m_selection->Add({object});
    else
        m_selection->Set({object});
}

void ZORHostSelectTool::DoubleClick(const QPointF& position)
{
    const ZORVisPickResult hit = m_view->PickAt(position, [this](QObject* owner) { return Accepts(owner); });
    if (auto* const object = qobject_cast<ZORGeoGeometry*>(hit.owner))
        emit Activated(object);
}

void ZORHostSelectTool::SelectBand(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers)
{
    const auto extent = to.x() >= from.x() ? ZORVisRenderer::Extent::Whole : ZORVisRenderer::Extent::Part;
    const QList<QObject*> owners = m_view->FindIn(QRectF(from, to).normalized(), extent,
                                                  [this](QObject* owner) { return Accepts(owner); });
    QList<ZORGeoGeometry*> objects;
    for (QObject* owner : owners) {
        if (auto* const object = qobject_cast<ZORGeoGeometry*>(owner))
            objects.append(object);
    }
    if (modifiers.testFlag(Qt::ShiftModifier))
        m_selection->Remove(objects);
    else
        m_selection->Add(objects);
}

bool ZORHostSelectTool::PressKey(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Escape)
        return false;
    m_selection->Clear();
    ClearPick();
    return true;
}

void ZORHostSelectTool::Paint(QPainter& painter)
{
    if (m_isPicked)
        ZORHostViewMarks::PaintNamedPoint(painter, *m_view, m_view->ToPosition(m_pickedPoint), m_pickedName);
}

void ZORHostSelectTool::OnSelectionChanged()
{
    const auto* const object = qobject_cast<const ZORGeoGeometry*>(m_pickedOwner);
    if (m_isPicked && object && object->GetContainer() && !m_selection->Contains(object))
        ClearPick();
}

void ZORHostSelectTool::OnSceneChanged()
{
    const ZORVisScene* const scene = m_view->GetScene();
    if (m_isPicked && (!scene || !m_pickedOwner || scene->GetBoundingBoxOf(m_pickedOwner).IsEmpty()))
        ClearPick();
}

void ZORHostSelectTool::ClearPick()
{
    if (!m_isPicked)
        return;
    m_isPicked = false;
    m_pickedOwner.clear();
    m_view->update();
    emit PickCleared();
}
