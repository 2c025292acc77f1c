// Where docks and tool bars of the main window are at first.

#pragma once

#include <QObject>

class QDockWidget;
class QMainWindow;
class ZORHostDockSizes;

/// Places the docks of the main window: the browser at the left, the log and the API calls as tabs at the bottom.
class ZORHostDockLayout : public QObject
{
    Q_OBJECT

public:
    struct Docks
    {
        QDockWidget* browser; // not owned, as the others
        QDockWidget* log;
        QDockWidget* api;
    };

    /// Places the docks.
    /// \param window  owns this object
    ZORHostDockLayout(QMainWindow* window, const Docks& docks);

    ZORHostDockSizes* GetSizes() const { return m_sizes; }

    /// Shows all docks and tool bars where they were at first.
    void Reset();

private:
    void PlaceDocks();

    QMainWindow* const m_window;
    const Docks m_docks;
    ZORHostDockSizes* m_sizes = nullptr; // child of the window
};
