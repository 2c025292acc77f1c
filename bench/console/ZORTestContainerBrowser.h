// The table of the container's geometries.

#pragma once

#include <QCoreApplication>
#include <QStandardItemModel>

class QComboBox;
class QTableView;
class ZORGeoContainer;
class ZORGeoGeometry;

/// Lists the geometries of a container with their reference counts in a table view, restricted to the
/// class chosen in a combo box and the classes derived from it.
///
/// The rows hold plain pointers between refreshes; a geometry that has left the container since is
/// recognized before it is touched.
class ZORTestContainerBrowser
{
    Q_DECLARE_TR_FUNCTIONS(ZORTestContainerBrowser)

public:
    enum class Deletion { NoRow, Deleted, Refused };

    /// Neither \a container nor the widgets are owned.
    ZORTestContainerBrowser(ZORGeoContainer* container, QComboBox* typeCombo, QTableView* table);
    Q_DISABLE_COPY_MOVE(ZORTestContainerBrowser)

    /// Offers all types and every registered class, by name.
    void FillTypes();
    /// Rebuilds the rows, linear in the number of geometries.
    void Refresh();

    /// Returns the geometry of the current row, whichever of its cells is current; null without a current row
    /// or when the geometry is no longer there.
    ZORGeoGeometry* GetCurrentGeometry() const;
    /// Deletes the geometry of the current cell if it is a feature or nothing refers to it. The cell of the
    /// reference count carries no geometry: Refused.
    Deletion DeleteCurrent();

private:
    ZORGeoGeometry* GetGeometry(const QModelIndex& index) const;

    ZORGeoContainer* m_container; // not owned
    QComboBox* m_typeCombo;       // not owned
    QTableView* m_table;          // not owned
    QStandardItemModel m_model;
};
