// The dialog of the preferences.

#pragma once

#include <QDialog>

class QCheckBox;
class QSpinBox;

/// Edits ZORHostPreferences; OK applies the choices, Cancel leaves them as they were.
class ZORHostPreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ZORHostPreferencesDialog(QWidget* parent);

    void accept() override;

private:
    QSpinBox* m_autosave;
    QCheckBox* m_showEverythingNew;
};
