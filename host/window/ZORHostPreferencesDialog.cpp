#include "window/ZORHostPreferencesDialog.h"

#include "base/ZORHostPreferences.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

ZORHostPreferencesDialog::ZORHostPreferencesDialog(QWidget* parent)
    : QDialog(parent)
    , m_autosave(new QSpinBox(this))
    , m_showEverythingNew(new QCheckBox(tr("&Show everything new in the view"), this))
{
    const ZORHostPreferences* preferences = ZORHostPreferences::Get();
    setObjectName("_PreferencesDialog");
    setWindowTitle(tr("Preferences"));
    constexpr int kWidth = 380; // logical pixels: the window manager shows the whole title
    setMinimumWidth(kWidth);
    auto* form = new QFormLayout(this);
    m_autosave->setObjectName("_AutosaveSpin");
    m_autosave->setRange(0, ZORHostPreferences::kMostAutosaveMinutes);
    m_autosave->setSpecialValueText(tr("Off"));
    m_autosave->setSuffix(tr(" min"));
    m_autosave->setValue(preferences->GetAutosaveMinutes());
    m_autosave->setToolTip(
        tr("Time between two copies of unsaved work, which the next start offers after an unexpected end"));
    form->addRow(tr("Save &automatically every:"), m_autosave);
    m_showEverythingNew->setObjectName("_ShowNewCheck");
    m_showEverythingNew->setChecked(preferences->ShowsEverythingNew());
    m_showEverythingNew->setToolTip(tr("Also objects that plug-ins create without showing them"));
    form->addRow(m_showEverythingNew);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_autosave->setFocus();
    m_autosave->selectAll();
}

void ZORHostPreferencesDialog::accept()
{
    ZORHostPreferences* preferences = ZORHostPreferences::Get();
    preferences->SetAutosaveMinutes(m_autosave->value());
    preferences->SetShowsEverythingNew(m_showEverythingNew->isChecked());
    QDialog::accept();
}
