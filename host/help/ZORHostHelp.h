// Help on what the user works with.

#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QMainWindow;
class QMenu;
class QWidget;
class ZORHostHelpWindow;

/// Opens the help: by F1 in any window of the program, modal ones included, on the dialog, the dock or the menu entry
/// that is active, and by entries of the menu "Help" on the contents and on mouse and keys.
///
/// A widget names its topic by the dynamic property "helpTopic"; otherwise the title of its dock or window is the topic.
/// A window without a page gets what is known of it: the command, and its fields with their tool tips.
///
/// Object names: "_HelpAction", "_HelpContentsAction", "_FirstStepsAction",
/// "_KeysAction".
class ZORHostHelp : public QObject
{
    Q_OBJECT

public:
    /// \param window  main window; owns this object
    explicit ZORHostHelp(QMainWindow* window);

    void AddTo(QMenu* menu);
    /// Opens the heading that reads like \a topic, or the contents where there is none.
    void ShowTopic(const QString& topic);
    /// Opens the help on a widget; null gives the contents.
    void ShowFor(QWidget* widget);
    /// Mouse and keys, with the keys that the actions of the main window have now.
    QString MakeKeySheet() const;

public slots:
    void OnHelpTriggered();
    void OnContentsTriggered();
    void OnKeysTriggered();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* AddAction(QMenu* menu, const char* objectName, const QString& text, const QString& tip);
    /// The window of the help, which a modal dialog must not block.
    ZORHostHelpWindow* OpenWindow();

    QMainWindow* m_window; // not owned
    QPointer<ZORHostHelpWindow> m_help;
};
