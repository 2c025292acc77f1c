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

private:
    void Refresh();
    void UpdateButtons();
    void OnLoadClicked();
    void OnUnloadClicked();
    QString GetSelectedPath() const;

    ZORHostPluginManager* m_manager; // not owned
    QTableWidget* m_table;
    QPushButton* m_unloadBtn;
};
