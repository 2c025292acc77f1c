// The page that lists the plug-ins.

#pragma once

#include <QDialog>

class QPushButton;
class QTableWidget;
class ZORHostPluginManager;

/// Shows every plug-in file with name, version, state, reason and path, and the folders that are searched;
/// loads and unloads plug-ins.
class ZORHostPluginDialog : public QDialog
{
    Q_OBJECT

public:
    /// \param manager  not owned, must outlive the dialog
    ZORHostPluginDialog(ZORHostPluginManager* manager, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Refresh();
    void UpdateButtons();
    /// Makes the column as wide as the rest of the table, or as its widest text where that is more.
    void FitPathColumn();
    void OnLoadClicked();
    void OnUnloadClicked();
    QString GetSelectedPath() const;

    ZORHostPluginManager* m_manager; // not owned
    QTableWidget* m_table;
    QPushButton* m_unloadBtn;
};
