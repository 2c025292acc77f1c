// Table of the last lines of a stream, for the log and API docks.

#pragma once

#include <QAbstractTableModel>

#include <deque>

/// One row of a ZORHostLineModel.
struct ZORHostLine
{
    int level = 0;     // meaning is the owner's; the filter of the docks keeps rows of at least a level
    QStringList cells; // one text a column
};

/// Holds at most as many rows as its capacity; the oldest leave first. Appending a batch costs one change signal
/// for the rows that leave and one for those that come, whatever their number.
class ZORHostLineModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role { LevelRole = Qt::UserRole };

    ZORHostLineModel(const QStringList& headers, int capacity, QObject* parent);

    /// Rows that have left because of the capacity since the last Clear().
    qint64 GetNumDropped() const { return m_dropped; }
    const ZORHostLine& GetLine(int row) const { return m_lines[size_t(row)]; }

    void Append(const QList<ZORHostLine>& lines);
    void Clear();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const QStringList m_headers;
    const int m_capacity;
    std::deque<ZORHostLine> m_lines;
    qint64 m_dropped = 0;
};
