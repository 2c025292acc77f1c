// Answers requests of commands to point at something in the 3D view.

#pragma once

#include "view/ZORHostViewTool.h"

#include <ZORCommand/ZORCmdPick.h>
#include <ZORCommand/ZORCmdPickAnswerer.h>

#include <QObject>
#include <QPointer>

#include <optional>

class QLabel;
class ZORHostSelection;
class ZORHostView3D;

/// While a request is active, this is the tool of the view: a label in the view shows the prompt, a ring marks where the
/// pointer would pick, the object under it is hovered, and what the request refuses is looked through. A click answers,
/// Backspace takes the last answer of a sequence back, Return completes it, Escape cancels. The view can be moved in the
/// usual ways, and dialogs stay usable.
///
/// A request that comes while a modal dialog blocks the view is canceled as soon as control returns to the event loop:
/// nobody could answer it. The dialogs of commands are not modal.
///
/// Thread safety: main thread only.
class ZORHostPickTool : public QObject, public ZORHostViewTool, public ZORCmdPickAnswerer
{
    Q_OBJECT

public:
    /// \param view       not owned; may die first
    /// \param selection  whose hovered object is used; not owned, may die first
    ZORHostPickTool(ZORHostView3D* view, ZORHostSelection* selection, QObject* parent);
    ~ZORHostPickTool() override;

    void BeginPick(ZORCmdPickRequest* request) override;
    void EndPick(ZORCmdPickRequest* request) override;

    void Hover(const QPointF& position) override;
    void Leave() override;
    void Click(const QPointF& position, Qt::KeyboardModifiers modifiers) override;
    void DoubleClick(const QPointF& position) override;
    void SelectBand(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers) override;
    bool PressKey(const QKeyEvent& event) override;
    void Paint(QPainter& painter) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsBlocked() const;
    bool Accepts(QObject* owner) const;
    ZORCmdPick Find(const QPointF& position) const;
    void SetTarget(const ZORCmdPick& pick);
    void ShowPrompt();
    void PlacePrompt();

    QPointer<ZORHostView3D> m_view;          // not owned
    QPointer<ZORHostSelection> m_selection;  // not owned
    QPointer<QLabel> m_prompt;               // child of the view
    QPointer<ZORCmdPickRequest> m_request;   // not owned; null while there is none
    ZORHostViewTool* m_toolBefore = nullptr; // not owned
    std::optional<ZORMathPoint> m_target;    // under the pointer
};
