#include "docks/ZORHostLineModel.h"

#include <ZORCommonUI/ZORCmnPlainText.h>

#include <algorithm>

ZORHostLineModel::ZORHostLineModel(const QStringList& headers, int capacity, QObject* parent)
    : QAbstractTableModel(parent)
    , m_headers(headers)
    , m_capacity(std::max(1, capacity))
{
}

void ZORHostLineModel::Append(const QList<ZORHostLine>& lines)
{
    if (lines.isEmpty())
        return;
    const qsizetype skipped = std::max<qsizetype>(0, lines.size() - m_capacity);
    const int added = int(lines.size() - skipped);
    const int leaving = std::max(0, int(m_lines.size()) + added - m_capacity);
    if (leaving > 0) {
        beginRemoveRows({}, 0, leaving - 1);
        m_lines.erase(m_lines.begin(), m_lines.begin() + leaving);
        endRemoveRows();
    }
    m_dropped += leaving + skipped;
    const int first = int(m_lines.size());
    beginInsertRows({}, first, first + added - 1);
    m_lines.insert(m_lines.end(), lines.begin() + skipped, lines.end());
    endInsertRows();
}

void ZORHostLineModel::Clear()
{
    beginResetModel();
    m_lines.clear();
    m_dropped = 0;
    endResetModel();
}

int ZORHostLineModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

int ZORHostLineModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_headers.size());
}

QVariant ZORHostLineModel::data(const QModelIndex& index, int role) const
{
    // Views ask for the current cell also where there is none, which the check would log.
    if (!index.isValid() || !checkIndex(index, CheckIndexOption::ParentIsInvalid))
        return {};
    const ZORHostLine& line = GetLine(index.row());
    switch (role) {
    case Qt::DisplayRole:
        // A row is one line high: line breaks inside a message are shown, not followed.
        return line.cells.value(index.column()).replace(u'\n', QChar(0x23ce));
    case Qt::ToolTipRole:
        return ZORCmnPlainText::ToToolTip(line.cells.value(index.column()));
    case LevelRole:
        return line.level;
    default:
        return {};
    }
}

QVariant ZORHostLineModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return m_headers.value(section);
}
