// Base of the dialogs that ask how a geometry shall be drawn.

#pragma once

#include "core/ZORTestSettingsGroup.h"

#include <QDialog>

class QPushButton;
class ZORTestEnvironment;

/// Gives the option dialogs their colour button. A concrete dialog reads its values from the settings when
/// it is built and writes them when OK is pressed; Cancel writes nothing.
class ZORTestVisOptionsDlg : public QDialog
{
    Q_OBJECT

public:
    /// \param environment  not owned; its console is the parent of the dialog
    explicit ZORTestVisOptionsDlg(ZORTestEnvironment* environment);

    ZORTestEnvironment* GetEnvironment() const { return m_environment; }

    /// Paints \a button in \a color and keeps the colour in its dynamic property "color".
    void SetButtonColor(QPushButton* button, const QColor& color);
    /// The colour that SetButtonColor() gave to \a button; invalid when there is none.
    static QColor GetButtonColor(const QPushButton* button);

public slots:
    /// Asks for the colour of the button that sent the signal. A cancelled question makes the colour
    /// invalid.
    void SelectColor();

protected:
    /// Enters the group \a geometry of "Debug/Visualization".
    ZORTestSettingsGroup OpenSettings(const char* geometry) const;

private:
    ZORTestEnvironment* m_environment; // not owned
};
