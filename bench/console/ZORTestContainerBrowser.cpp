#include "console/ZORTestContainerBrowser.h"

#include <ZORFeature/ZORFeatObject.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QComboBox>
#include <QMap>
#include <QSignalBlocker>
#include <QTableView>

namespace {

constexpr int kGeometryRole = Qt::UserRole + 1;

QStandardItem* CreateNameItem(ZORGeoGeometry* geometry)
{
    auto* item = new QStandardItem(geometry->objectName());
    item->setData(QVariant::fromValue(geometry), kGeometryRole);
    return item;
}

} // namespace

ZORTestContainerBrowser::ZORTestContainerBrowser(ZORGeoContainer* container, QComboBox* typeCombo,
                                                 QTableView* table)
    : m_container(container)
    , m_typeCombo(typeCombo)
    , m_table(table)
{
    m_table->setModel(&m_model);
}

void ZORTestContainerBrowser::FillTypes()
{
    QMap<QByteArray, const QMetaObject*> byName;
    const auto types = m_container->GetRegisteredTypes();
    for (const QMetaObject* type : types)
        byName.insert(type->className(), type);

    m_typeCombo->addItem(tr("<all types>"));
    for (auto type = byName.cbegin(); type != byName.cend(); ++type)
        m_typeCombo->addItem(QLatin1String(type.key()), QVariant::fromValue(type.value()));
}

void ZORTestContainerBrowser::Refresh()
{
    const auto* filter = m_typeCombo->currentData().value<const QMetaObject*>();
    const int numGeometry = m_container->GetNumGeometry();
    QList<QStandardItem*> names;
    QList<QStandardItem*> referenceCounts;
    for (int index = 0; index < numGeometry; ++index) {
        ZORGeoGeometry* geometry = m_container->GetGeometryByIndex(index);
        if (!geometry || (filter && !geometry->metaObject()->inherits(filter)))
            continue;
        names.append(CreateNameItem(geometry));
        referenceCounts.append(new QStandardItem(QString::number(geometry->GetReferenceCount())));
    }

    m_model.clear();
    m_model.setColumnCount(2);
    m_model.setRowCount(int(names.size()));
    {
        // The view reads the cells when it paints. Cells that are set in the final shape of the table know their
        // place; those of columns that were appended search for it when they are deleted, each among all.
        const QSignalBlocker blocker(&m_model);
        for (int row = 0; row < names.size(); ++row) {
            m_model.setItem(row, 0, names[row]);
            m_model.setItem(row, 1, referenceCounts[row]);
        }
    }
    m_model.setHorizontalHeaderLabels({tr("Name"), tr("Ref Count")});
    m_table->resizeColumnsToContents();
}

ZORGeoGeometry* ZORTestContainerBrowser::GetCurrentGeometry() const
{
    return GetGeometry(m_table->currentIndex().siblingAtColumn(0));
}

ZORTestContainerBrowser::Deletion ZORTestContainerBrowser::DeleteCurrent()
{
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid())
        return Deletion::NoRow;
    // Only the cell of the name carries the geometry, so that a click on the count deletes nothing.
    ZORGeoGeometry* geometry = GetGeometry(current);
    if (auto* feature = qobject_cast<ZORFeatObject*>(geometry)) {
        feature->Remove();
        return Deletion::Deleted;
    }
    if (!geometry || geometry->GetReferenceCount() != 0)
        return Deletion::Refused;
    geometry->RemoveNoReferences();
    return Deletion::Deleted;
}

ZORGeoGeometry* ZORTestContainerBrowser::GetGeometry(const QModelIndex& index) const
{
    auto* geometry = index.data(kGeometryRole).value<ZORGeoGeometry*>();
    const int numGeometry = geometry ? m_container->GetNumGeometry() : 0;
    for (int i = 0; i < numGeometry; ++i) {
        if (m_container->GetGeometryByIndex(i) == geometry)
            return geometry;
    }
    return nullptr;
}
