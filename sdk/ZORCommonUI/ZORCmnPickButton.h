// Button beside a field, by which the user picks its value in the view.

#pragma once

#include <ZORCommand/ZORCmdPickRequest.h>
#include <ZORCommonUI/ZORCommonUIGlobal.h>

#include <QToolButton>

#include <memory>

/// Starts a ZORCmdPickRequest while it is checked, and cancels it when it is pressed again. Escape in the window of the
/// button cancels the request instead of closing the window, and so does hiding the button. Afterwards the window is
/// active again, with the focus in the field.
///
/// Hidden while the application has no view to pick in.
///
/// Thread safety: main thread only.
class ZORCOMMONUI_EXPORT ZORCmnPickButton : public QToolButton
{
    Q_OBJECT

public:
    /// \param kinds   what may be picked
    /// \param prompt  a sentence for the view and the tool tip
    /// \param field   beside which the button is; its parent is that of the button
    ZORCmnPickButton(ZORCmdPickRequest::Kinds kinds, const QString& prompt, QWidget* field);
    ~ZORCmnPickButton() override;

    /// For filters; owned by the button.
    ZORCmdPickRequest* GetRequest() const;

signals:
    void Picked(const ZORCmdPick& pick);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void OnClicked(bool isChecked);
    void OnEnded();
    void UpdateIcon();

    class Private;
    const std::unique_ptr<Private> d;
};
