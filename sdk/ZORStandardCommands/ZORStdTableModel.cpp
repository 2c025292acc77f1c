#include "ZORStdTableModel.h"

ZORStdTableModel::ZORStdTableModel(int numColumns, const QIcon& warning, QObject* parent)
    : QAbstractTableModel(parent)
    , m_numColumns(numColumns)
    , m_warning(warning)
{
}

int ZORStdTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : GetNumRows();
}

int ZORStdTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_numColumns;
}

QVariant ZORStdTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return GetTitle(section);
}

QVariant ZORStdTableModel::data(const QModelIndex& index, int role) const
{
    // Views ask for the current cell also where there is none, which the check would log.
    if (!index.isValid() || !checkIndex(index))
        return {};
    return GetCell(index.row(), index.column(), role);
}

bool ZORStdTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    return checkIndex(index, CheckIndexOption::IndexIsValid) && role == Qt::EditRole
           && SetCell(index.row(), index.column(), value);
}

Qt::ItemFlags ZORStdTableModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsEditable : flags;
}
