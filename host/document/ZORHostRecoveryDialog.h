// Unsaved documents of sessions that ended unexpectedly.

#pragma once

#include "document/ZORHostRescue.h"

#include <QDialog>

class QPushButton;
class QTableWidget;
class ZORHostDocumentCommands;

/// Lists the documents that can be recovered (ZORHostRescue::FindAbandoned()); one can be opened, several can be discarded. What is
/// left alone is offered again. No other process finds the files while the dialog lists them.
class ZORHostRecoveryDialog : public QDialog
{
    Q_OBJECT

public:
    /// \param entries   what is listed, in order
    /// \param commands  not owned
    ZORHostRecoveryDialog(const QList<ZORHostRescue::Entry>& entries, ZORHostDocumentCommands* commands,
                          QWidget* parent);

public slots:
    /// Opens the current document and closes the dialog, unless it cannot be read or the user cancels.
    void OnRecoverClicked();
    /// Removes the files of the selected documents after a question.
    void OnDiscardClicked();

private:
    void Fill();
    void UpdateButtons();

    QList<ZORHostRescue::Entry> m_entries;
    ZORHostDocumentCommands* m_commands; // not owned
    QTableWidget* m_table;
    QPushButton* m_recoverBtn;
    QPushButton* m_discardBtn;
};
