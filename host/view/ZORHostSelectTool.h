// Selecting in the 3D view.

#pragma once

#include "view/ZORHostViewTool.h"

#include <ZORMathematics/ZORMathPoint.h>

#include <QObject>
#include <QPointer>
#include <QString>

class ZORGeoGeometry;
class ZORHostSelection;
class ZORHostView3D;

/// The usual tool of the view. A click selects what is under the pointer, and nothing where there is nothing; with Ctrl
/// it adds that, or takes it away; with Shift it adds. A band drawn with Ctrl adds what lies in it: whole objects when it
/// is drawn to the right, all that it touches when it is drawn to the left; with Ctrl and Shift it takes these away.
/// Escape selects nothing. What the filter of the selection leaves out is looked through.
///
/// Thread safety: main thread only.
class ZORHostSelectTool : public QObject, public ZORHostViewTool
{
    Q_OBJECT

public:
    /// Becomes the tool of the view.
    /// \param view       not owned; may die first
    /// \param selection  not owned; may die first
    ZORHostSelectTool(ZORHostView3D* view, ZORHostSelection* selection, QObject* parent);
    ~ZORHostSelectTool() override;

    void Hover(const QPointF& position) override;
    void Leave() override;
    void Click(const QPointF& position, Qt::KeyboardModifiers modifiers) override;
    void DoubleClick(const QPointF& position) override;
    void SelectBand(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers) override;
    bool PressKey(const QKeyEvent& event) override;
    void Paint(QPainter& painter) override;

signals:
    /// The user has clicked at an object.
    /// \param owner  what the visual object stands for; may be null
    void Picked(QObject* owner, const QString& name, const ZORMathPoint& point);
    /// The mark of the last pick has gone: the user has clicked beside all objects or pressed Escape, or the object is
    /// not seen or not selected any more.
    void PickCleared();
    /// The user has clicked at an object twice.
    void Activated(ZORGeoGeometry* object);

private:
    bool Accepts(QObject* owner) const;
    void Select(ZORGeoGeometry* object, Qt::KeyboardModifiers modifiers);
    void OnSelectionChanged();
    void OnSceneChanged();
    void ClearPick();

    QPointer<ZORHostView3D> m_view;         // not owned
    QPointer<ZORHostSelection> m_selection; // not owned
    bool m_isPicked = false;
    QPointer<QObject> m_pickedOwner; // not owned; may be null for a pick
    ZORMathPoint m_pickedPoint;
    QString m_pickedName;
};
