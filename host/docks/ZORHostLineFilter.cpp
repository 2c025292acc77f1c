#include "docks/ZORHostLineFilter.h"

#include "docks/ZORHostLineModel.h"

#include <algorithm>

void ZORHostLineFilter::SetMinimumLevel(int level)
{
    m_level = level;
    invalidateFilter();
}

void ZORHostLineFilter::SetText(const QString& text)
{
    m_text = text;
    invalidateFilter();
}

void ZORHostLineFilter::SetColumnValue(int column, const QString& value)
{
    m_column = column;
    m_value = value;
    invalidateFilter();
}

bool ZORHostLineFilter::filterAcceptsRow(int sourceRow, const QModelIndex&) const
{
    const ZORHostLine& line = static_cast<const ZORHostLineModel*>(sourceModel())->GetLine(sourceRow);
    if (line.level < m_level)
        return false;
    if (!m_value.isEmpty() && line.cells.value(m_column) != m_value)
        return false;
    return m_text.isEmpty()
           || std::any_of(line.cells.cbegin(), line.cells.cend(),
                          [this](const QString& cell) { return cell.contains(m_text, Qt::CaseInsensitive); });
}
