// Common part of the log and API docks.

#pragma once

#include <QDockWidget>

class QHBoxLayout;
class QLineEdit;
class QTreeView;
class ZORHostLineFilter;
class ZORHostLineModel;

/// A dock with a bounded list of lines, a text filter and the buttons Copy and Clear. The list follows
/// its end as long as it is scrolled there, and stays where it is otherwise.
class ZORHostLineDock : public QDockWidget
{
    Q_OBJECT

public:
    ZORHostLineModel* GetModel() const { return m_model; }
    ZORHostLineFilter* GetFilter() const { return m_filter; }

public slots:
    /// Puts the selected rows, or all visible ones when none is selected, on the clipboard: a line a row,
    /// columns parted by tabs.
    void OnCopyClicked();
    void OnClearClicked();

protected:
    /// \param prefix  of the object names of the widgets: "_Log" gives "_LogTable", "_LogFilterEdit",
    ///                "_LogCopyBtn" and "_LogClearBtn"
    ZORHostLineDock(const QString& title, const QString& prefix, const QStringList& headers, int capacity,
                    QWidget* parent);

    /// Where derived docks put their own controls, in front of the text filter.
    QHBoxLayout* GetControls() const { return m_controls; }
    QTreeView* GetTable() const { return m_table; }
    /// Puts \a hint between the controls and the table.
    void InsertHint(QWidget* hint);

private:
    ZORHostLineModel* m_model;   // child
    ZORHostLineFilter* m_filter; // child
    QHBoxLayout* m_controls;
    QLineEdit* m_filterEdit;
    QTreeView* m_table;
};
