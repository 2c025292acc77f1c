// Test dialog "Create vector text graphics".

#pragma once

#include "core/ZORTestDialog.h"

#include <memory>

class QDoubleSpinBox;
class ZORVisVectorText;

namespace Ui {
class ZORTestVisVectorTextDlg;
}

/// Draws a text into the debug visualization: its strokes, the origin of its plane, and guide lines from there
/// along the baseline, to the height of the capitals and down to the next baseline, all white. No value is
/// refused; what the SDK makes of zeros is told by ZORVisVectorText.
///
/// Settings group "Debug/VisVectorText", a key for every field but the text; written first of all.
class ZORTestVisVectorTextDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create vector text graphics"))

public:
    Q_INVOKABLE explicit ZORTestVisVectorTextDlg(ZORTestEnvironment* environment);
    ~ZORTestVisVectorTextDlg() override;

    bool Apply() override;

private:
    struct Number
    {
        QLatin1String key;
        QDoubleSpinBox* box; // not owned
    };

    void FillCombos();
    void ReadSettings();
    void WriteSettings() const;
    QList<Number> GetNumbers() const;
    int GetDecorations() const;
    ZORVisVectorText GetText() const;

    const std::unique_ptr<Ui::ZORTestVisVectorTextDlg> m_ui;
};
