// Sizes of windows and docks on screens of any size.

#pragma once

#include <QHash>
#include <QMap>
#include <QObject>
#include <QRect>
#include <QSize>
#include <QTimer>
#include <QVariant>

class QDockWidget;
class QMainWindow;
class QWidget;

namespace ZORHostPlacement {

/// The rectangle nearest to \a wanted that lies within \a available, as small as need be.
QRect FitInto(const QRect& wanted, const QRect& available);

/// Gives \a window the size \a wanted, or as much of it as its screen has room for beside the frame of the window.
/// A window that does not fit is maximized.
void SetFirstSize(QWidget* window, const QSize& wanted);

/// Moves \a window onto its screen and makes it no larger than that. A maximized window stays as it is, and so
/// does its size for later.
void KeepOnScreen(QWidget* window);

} // namespace ZORHostPlacement

/// Gives docks that a small window has squeezed the size they had before, as soon as there is room again.
///
/// The size that counts is the last one the user gave a dock, or the layout while the window kept its own size.
class ZORHostDockSizes : public QObject
{
    Q_OBJECT

public:
    /// Watches the docks that \a window has now.
    /// \param window  owns this object
    explicit ZORHostDockSizes(QMainWindow* window);

    /// The sizes by object names of the docks, for settings.
    QVariantMap GetSizes() const;
    /// Takes entries that are sizes of docks; leaves the others alone.
    void SetSizes(const QVariantMap& sizes);

    /// Whether the docks have the sizes that go with the present size of the window.
    bool IsSettled() const { return !m_isPending; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Note(QDockWidget* dock);
    void Restore();

    QMainWindow* m_window; // not owned
    QSize m_windowSize;
    QMap<QString, QSize> m_sizes; // by object name of the dock
    QTimer m_restoring;           // runs once the window has another size
    QTimer m_settling;            // runs until the layout has given the docks their sizes again
    bool m_isPending = false;     // one of the timers runs, or waits for the window
};
