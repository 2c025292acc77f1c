#include "console/ZORTestVisualizationList.h"

#include "core/ZORTestCommandRegistry.h"
#include "core/ZORTestEnvironment.h"
#include "visualization/ZORTestVisualizer.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QListWidget>
#include <QScopedValueRollback>

ZORTestVisualizationList::ZORTestVisualizationList(ZORTestEnvironment* environment, QListWidget* list)
    : m_environment(environment)
    , m_list(list)
{
}

ZORTestVisualizationList::~ZORTestVisualizationList()
{
    while (!m_visualizations.isEmpty())
        Remove(m_visualizations.cbegin().key());
}

ZORTestVisualizationList::Result ZORTestVisualizationList::Show(ZORGeoGeometry* geometry)
{
    auto* visualizer = ZORTestCommandRegistry::Instance().CreateVisualizer(geometry->metaObject());
    if (!visualizer)
        return Result::NoVisualizer;
    const QPointer<ZORGeoGeometry> guard(geometry);
    ZORVisVirtualObject* object = visualizer->Visualize(m_environment, geometry);
    if (!object)
        return Result::NotCreated;
    if (!guard) { // the user may delete it in the host while the options dialog is open
        delete object;
        return Result::NotCreated;
    }

    Remove(geometry);
    // Ends with the visualization at the latest: a geometry may outlive the bench.
    const auto destroyed = QObject::connect(
        geometry, &QObject::destroyed, geometry, [this, geometry] { m_visualizations.remove(geometry); },
        Qt::DirectConnection);
    m_visualizations.insert(geometry, {object, destroyed});
    m_environment->GetEnvironment()->AddVirtualObject(object);
    return Result::Shown;
}

void ZORTestVisualizationList::Refresh()
{
    if (m_isRemovingAll)
        return;
    m_list->clear();
    for (auto entry = m_visualizations.cbegin(); entry != m_visualizations.cend(); ++entry) {
        auto* item = new QListWidgetItem(entry.key()->objectName(), m_list);
        item->setData(Qt::UserRole, QVariant::fromValue(entry.key()));
    }
}

ZORGeoGeometry* ZORTestVisualizationList::GetCurrentGeometry() const
{
    const QListWidgetItem* item = m_list->currentItem();
    auto* geometry = item ? item->data(Qt::UserRole).value<ZORGeoGeometry*>() : nullptr;
    return m_visualizations.contains(geometry) ? geometry : nullptr;
}

void ZORTestVisualizationList::Remove(ZORGeoGeometry* geometry)
{
    // Out of the list first: deleting the object makes the environment's signal refresh the rows.
    const Visualization removed = m_visualizations.take(geometry);
    QObject::disconnect(removed.destroyed);
    if (removed.object)
        delete removed.object;
    else
        Refresh(); // somebody else deleted it before
}

void ZORTestVisualizationList::RemoveAll()
{
    Refresh();
    QHash<ZORGeoGeometry*, QListWidgetItem*> rows;
    for (int i = 0; i < m_list->count(); ++i)
        rows.insert(m_list->item(i)->data(Qt::UserRole).value<ZORGeoGeometry*>(), m_list->item(i));
    {
        const QScopedValueRollback guard(m_isRemovingAll, true);
        while (!m_visualizations.isEmpty()) {
            ZORGeoGeometry* const geometry = m_visualizations.cbegin().key();
            delete rows.take(geometry);
            Remove(geometry);
        }
    }
    Refresh(); // whoever heard of the removals may have changed the list
}
