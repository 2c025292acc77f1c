// Spin box for values with a unit.

#pragma once

#include <ZORCommonUI/ZORCommonUIGlobal.h>

#include <QDoubleSpinBox>

#include <memory>

/// Shows a value in the unit that people use and keeps it in the unit that the SDK uses.
///
/// The dynamic property "magnitude" says what the value is; it may be set at any time and keeps the
/// internal value:
/// | "magnitude" | shown in    | internal    | suffix |
/// |-------------|-------------|-------------|--------|
/// | "Length"    | millimetres | millimetres | " mm"  |
/// | "Angle"     | degrees     | radians     | degree sign |
/// | none, other | as it is    | as it is    |        |
///
/// The range is -1e9 to 1e9 with 6 decimals; trailing zeros are not shown. A point is accepted as the
/// decimal separator in every locale.
///
/// The number is selected when the box gets the focus, so that typing replaces it; a click into the box that has the
/// focus places the cursor.
///
/// Thread safety: main thread only.
class ZORCOMMONUI_EXPORT ZORCmnUnitSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit ZORCmnUnitSpinBox(QWidget* parent = nullptr);
    ~ZORCmnUnitSpinBox() override;

    /// The value in the internal unit. Exactly what SetInternalValue() was given as long as the number shown
    /// is still that one, although fewer decimals are shown.
    double GetInternalValue() const;
    /// Shows an internal value; a value outside the range is clamped, one that is not a number ignored.
    void SetInternalValue(double value);

    QString textFromValue(double value) const override;
    double valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void UpdateMagnitude();
    void SelectOnFocus(Qt::FocusReason reason);
    QString WithLocalSeparator(const QString& text) const;

    void Show(double internal);

    class Private;
    const std::unique_ptr<Private> d;
};
