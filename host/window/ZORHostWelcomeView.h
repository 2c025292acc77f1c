// What the middle of the window shows while the document is empty.

#pragma once

#include <QFrame>
#include <QMetaObject>
#include <QPointer>
#include <QTimer>

class QAction;
class QGridLayout;
class QMenu;
class QVBoxLayout;
class ZORFeatEnvironment;

/// Covers the 3D view while there is nothing to see in it: neither a geometry in the document nor a visual object.
/// Offers actions and the entries of menus as buttons under headings.
class ZORHostWelcomeView : public QFrame
{
    Q_OBJECT

public:
    /// \param covered  gets the focus that the welcome loses when it goes; not owned
    ZORHostWelcomeView(QWidget* covered, QWidget* parent);

    /// Adds buttons for \a actions under a heading.
    void AddActions(const QString& heading, const QList<QAction*>& actions);
    /// Adds buttons for the enabled entries of \a menu, as they are whenever the welcome appears.
    /// \param most  number of buttons
    void AddMenu(const QString& heading, QMenu* menu, int most);

    /// Chooses the environment that is to be seen; null is empty.
    void SetEnvironment(ZORFeatEnvironment* environment);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct MenuPart
    {
        QMenu* menu; // not owned
        QVBoxLayout* column;
        int most;
    };

    QVBoxLayout* AddColumn(const QString& heading);
    void FillMenus();
    bool IsEmpty() const;

    QWidget* m_covered; // not owned
    QGridLayout* m_parts;
    QList<MenuPart> m_menus;
    QPointer<ZORFeatEnvironment> m_environment; // not owned
    QList<QMetaObject::Connection> m_connections;
    QTimer m_showTimer; // a document that is replaced is empty for a moment
};
