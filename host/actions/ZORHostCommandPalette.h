// Finds and runs any action by typing a part of its name.

#pragma once

#include "actions/ZORHostActionIndex.h"

#include <QDialog>

class QLineEdit;
class QTreeWidget;

/// Lists every action of the open main windows with its menu path. Typing filters: every word must occur in
/// text or path, whatever its case; hits at the beginning of the text come first. Enter triggers the current
/// action. Actions that vanish while it is open leave the list, and those that
/// are published join it. Deletes itself on close.
class ZORHostCommandPalette : public QDialog
{
    Q_OBJECT

public:
    explicit ZORHostCommandPalette(QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Collects the actions again, such as after a plug-in was loaded.
    void Reload();
    void Refresh();
    /// Removes the rows whose action has been destroyed, as those of a plug-in are that is unloaded.
    void RemoveGone();
    void TriggerCurrent();

    QList<ZORHostActionEntry> m_entries;
    QLineEdit* m_edit;
    QTreeWidget* m_list;
};
