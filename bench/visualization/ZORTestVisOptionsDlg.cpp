#include "visualization/ZORTestVisOptionsDlg.h"

#include "core/ZORTestEnvironment.h"

#include <QColorDialog>
#include <QPushButton>

ZORTestVisOptionsDlg::ZORTestVisOptionsDlg(ZORTestEnvironment* environment)
    : QDialog(environment->GetUiParent())
    , m_environment(environment)
{
}

void ZORTestVisOptionsDlg::SetButtonColor(QPushButton* button, const QColor& color)
{
    button->setStyleSheet(QString::fromLatin1("background-color: rgb(%1,%2,%3);")
                              .arg(QString::number(color.red()), QString::number(color.green()),
                                   QString::number(color.blue())));
    button->setProperty("color", color);
}

QColor ZORTestVisOptionsDlg::GetButtonColor(const QPushButton* button)
{
    return button->property("color").value<QColor>();
}

ZORTestSettingsGroup ZORTestVisOptionsDlg::OpenSettings(const char* geometry) const
{
    return {m_environment->GetSettings(), QLatin1String("Visualization"), QLatin1String(geometry)};
}

void ZORTestVisOptionsDlg::SelectColor()
{
    auto* button = qobject_cast<QPushButton*>(sender());
    if (!button)
        return;
    // "Surface" in every dialog: this title is established.
    SetButtonColor(button, QColorDialog::getColor(GetButtonColor(button), this, tr("Surface Color")));
}
