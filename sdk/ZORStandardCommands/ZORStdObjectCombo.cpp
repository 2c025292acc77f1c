#include "ZORStdObjectCombo.h"

#include "ZORStdObjects.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QSet>
#include <QSignalBlocker>

namespace {

using ObjectPointer = QPointer<ZORGeoGeometry>;

bool IsOf(const ZORGeoGeometry& object, ZORStdObjectCombo::Shapes shapes)
{
    if (qobject_cast<const ZORCompRosette*>(&object))
        return false; // its line only shows it
    if (const auto* feature = qobject_cast<const ZORFeatGeometry*>(&object)) {
        const ZORTopBody* const body = feature->GetBody();
        return body && body->GetDimension() >= 0
               && shapes.testFlag(ZORStdObjectCombo::Shape(1 << body->GetDimension()));
    }
    return (shapes.testFlag(ZORStdObjectCombo::Points) && qobject_cast<const ZORGeoPoint*>(&object))
           || (shapes.testFlag(ZORStdObjectCombo::Curves) && qobject_cast<const ZORGeoCurve*>(&object))
           || (shapes.testFlag(ZORStdObjectCombo::Surfaces) && qobject_cast<const ZORGeoSurface*>(&object));
}

} // namespace

ZORStdObjectCombo::Filter ZORStdObjectCombo::ShapeFilter(Shapes shapes)
{
    return [shapes](const ZORGeoGeometry& object) { return IsOf(object, shapes); };
}

ZORStdObjectCombo::ZORStdObjectCombo(ZORFeatContainer* container, const Filter& filter,
                                     const QString& noneText, QWidget* parent)
    : QComboBox(parent)
    , m_container(container)
    , m_filter(filter)
    , m_noneText(noneText)
{
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    setPlaceholderText(tr("none"));
    Refresh();
    connect(container, &ZORGeoContainer::GeometryAdded, this, &ZORStdObjectCombo::OnAdded);
    connect(container, &ZORGeoContainer::GeometryRemoved, this, &ZORStdObjectCombo::ScheduleRefresh);
    connect(container, &ZORFeatContainer::FeatureLabelChanged, this, &ZORStdObjectCombo::ScheduleRefresh);
    connect(this, &QComboBox::currentIndexChanged, this, &ZORStdObjectCombo::OnIndexChanged);
    connect(this, &QComboBox::activated, this, [this] { m_selectsNext = false; });
}

ZORStdObjectCombo::~ZORStdObjectCombo() = default;

void ZORStdObjectCombo::SetFilter(const Filter& filter)
{
    m_filter = filter;
    Refresh();
}

ZORGeoGeometry* ZORStdObjectCombo::GetObject() const
{
    return m_object;
}

void ZORStdObjectCombo::Select(ZORGeoGeometry* object)
{
    m_object = object;
    Refresh();
}

ZORGeoGeometry* ZORStdObjectCombo::Find(const ZORGeoGeometry* object) const
{
    const ZORGeoGeometry* const shape = ZORFeatShapeOf(object);
    for (int i = 0; object && i < count(); ++i) {
        ZORGeoGeometry* const listed = itemData(i).value<ObjectPointer>();
        if (!listed)
            continue;
        const auto* const feature = qobject_cast<const ZORFeatGeometry*>(listed);
        if (listed == object || (shape && ZORFeatShapeOf(listed) == shape)
            || (feature && feature->GetBody() == object))
            return listed;
    }
    return nullptr;
}

void ZORStdObjectCombo::SelectNext()
{
    m_selectsNext = true;
}

void ZORStdObjectCombo::OnAdded(ZORGeoGeometry* object)
{
    if (m_selectsNext && m_filter(*object)) {
        m_selectsNext = false;
        m_object = object; // until it is listed
    }
    ScheduleRefresh();
}

// Files bring thousands of objects at once: they are listed when all of them are there.
void ZORStdObjectCombo::ScheduleRefresh()
{
    if (m_isScheduled)
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(this, &ZORStdObjectCombo::Refresh, Qt::QueuedConnection);
}

QList<ZORGeoGeometry*> ZORStdObjectCombo::FindObjects()
{
    QList<ZORGeoGeometry*> features;
    QList<ZORGeoGeometry*> others;
    QSet<const ZORGeoGeometry*> shapes;
    const int count = m_container ? m_container->GetNumGeometry() : 0;
    for (int i = 0; i < count; ++i) {
        ZORGeoGeometry* const object = m_container->GetGeometryByIndex(i);
        const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
        if (feature) {
            connect(feature, &ZORFeatGeometry::BodyChanged, this, &ZORStdObjectCombo::ScheduleRefresh,
                    Qt::UniqueConnection);
            shapes.insert(ZORFeatShapeOf(feature));
        }
        if (m_filter(*object))
            (qobject_cast<const ZORFeatObject*>(object) ? features : others).append(object);
    }
    others.removeIf([&shapes](const ZORGeoGeometry* object) { return shapes.contains(object); });
    return features + others;
}

void ZORStdObjectCombo::Refresh()
{
    m_isScheduled = false;
    const QList<ZORGeoGeometry*> objects = FindObjects();
    {
        const QSignalBlocker blocker(this);
        clear();
        if (!m_noneText.isNull())
            addItem(m_noneText);
        for (ZORGeoGeometry* object : objects)
            addItem(ZORStdNameOf(object), QVariant::fromValue(ObjectPointer(object)));
        // Another one than the one that was chosen must not slip in.
        const qsizetype index = objects.indexOf(m_object);
        const bool isFirst = m_noneText.isNull() && !m_wasChosen && !objects.isEmpty();
        setCurrentIndex(index >= 0                        ? count() - int(objects.size() - index)
                        : m_noneText.isNull() && !isFirst ? -1
                                                          : 0);
    }
    OnIndexChanged();
}

void ZORStdObjectCombo::OnIndexChanged()
{
    m_object = currentData().value<ObjectPointer>();
    if (m_object == m_reported)
        return;
    m_reported = m_object;
    m_wasChosen |= !m_object.isNull();
    emit ObjectChanged();
}
