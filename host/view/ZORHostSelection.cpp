#include "view/ZORHostSelection.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QSet>

#include <utility>

ZORHostSelection::ZORHostSelection(QObject* parent)
    : QObject(parent)
{
}

ZORHostSelection::~ZORHostSelection() = default;

void ZORHostSelection::SetContainer(ZORGeoContainer* container)
{
    if (container == m_container && container)
        return;
    if (m_container)
        m_container->disconnect(this);
    m_container = container;
    m_leaving.clear();
    Empty();
    if (!container)
        return;
    connect(container, &ZORGeoContainer::GeometryAboutToBeRemoved, this, &ZORHostSelection::Forget);
    connect(container, &ZORGeoContainer::GeometryRemoved, this, [this] {
        if (!m_leaving.isEmpty()) // an announcement may be older than this connection
            m_leaving.removeLast();
    });
    connect(container, &QObject::destroyed, this, [this] {
        m_leaving.clear();
        Empty();
    });
}

QList<ZORGeoGeometry*> ZORHostSelection::GetObjects() const
{
    QList<ZORGeoGeometry*> objects;
    objects.reserve(GetCount());
    for (const auto& [number, object] : m_order)
        objects.append(object);
    return objects;
}

ZORGeoGeometry* ZORHostSelection::GetLast() const
{
    return m_order.empty() ? nullptr : m_order.rbegin()->second;
}

void ZORHostSelection::Set(const QList<ZORGeoGeometry*>& objects)
{
    const QSet<const ZORGeoGeometry*> wanted(objects.cbegin(), objects.cend());
    bool isChanged = false;
    for (ZORGeoGeometry* object : GetObjects())
        isChanged |= !wanted.contains(object) && TakeOut(object);
    for (ZORGeoGeometry* object : objects)
        isChanged |= Insert(object);
    if (isChanged)
        emit Changed();
}

void ZORHostSelection::Add(const QList<ZORGeoGeometry*>& objects)
{
    bool isChanged = false;
    for (ZORGeoGeometry* object : objects)
        isChanged |= Insert(object);
    if (isChanged)
        emit Changed();
}

void ZORHostSelection::Remove(const QList<ZORGeoGeometry*>& objects)
{
    bool isChanged = false;
    for (const ZORGeoGeometry* object : objects)
        isChanged |= TakeOut(object);
    if (isChanged)
        emit Changed();
}

void ZORHostSelection::Toggle(const QList<ZORGeoGeometry*>& objects)
{
    bool isChanged = false;
    for (ZORGeoGeometry* object : objects)
        isChanged |= TakeOut(object) || Insert(object);
    if (isChanged)
        emit Changed();
}

void ZORHostSelection::Clear()
{
    Set({});
}

void ZORHostSelection::SetHovered(ZORGeoGeometry* object)
{
    ZORGeoGeometry* const hovered = IsSelectable(object) ? object : nullptr;
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    emit HoveredChanged(hovered);
}

void ZORHostSelection::SetFilter(ZORHostObjectKinds kinds)
{
    if (kinds == m_filter)
        return;
    m_filter = kinds;
    emit FilterChanged(kinds);
}

bool ZORHostSelection::Accepts(const ZORGeoGeometry* object) const
{
    return object && m_filter.testFlag(ZORHostObjectKindOf(object));
}

bool ZORHostSelection::IsSelectable(const ZORGeoGeometry* object) const
{
    return object && m_container && !m_leaving.contains(object) && object->GetContainer() == m_container
           && object->IsInitialized();
}

bool ZORHostSelection::Insert(ZORGeoGeometry* object)
{
    if (!IsSelectable(object) || Contains(object))
        return false;
    m_numbers.insert(object, m_nextNumber);
    m_order.emplace(m_nextNumber++, object);
    return true;
}

bool ZORHostSelection::TakeOut(const ZORGeoGeometry* object)
{
    const auto number = m_numbers.constFind(object);
    if (number == m_numbers.constEnd())
        return false;
    m_order.erase(*number);
    m_numbers.erase(number);
    return true;
}

void ZORHostSelection::Forget(const ZORGeoGeometry* object)
{
    m_leaving.append(object);
    if (object == m_hovered)
        SetHovered(nullptr);
    if (!TakeOut(object) || std::exchange(m_isChangePosted, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isChangePosted = false;
            emit Changed();
        },
        Qt::QueuedConnection);
}

void ZORHostSelection::Empty()
{
    const bool wasEmpty = IsEmpty();
    m_numbers.clear();
    m_order.clear();
    SetHovered(nullptr);
    if (!wasEmpty)
        emit Changed();
}
