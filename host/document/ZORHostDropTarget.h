// Files that are dragged onto a window.

#pragma once

#include <QObject>
#include <QStringList>

class QDropEvent;
class QLabel;
class QMimeData;
class QWidget;
class ZORHostDocumentCommands;

/// Lets the user drop files onto a window: ZORHostDocumentCommands::Add() reads them. While they are over the window, a banner
/// says what will happen, and the cursor shows a link for files to open, a plus for files to import, and a refusal where none can
/// be read. Files that cannot be read are named by the banner and, once dropped with others, by an error box.
///
/// Thread safety: main thread only.
class ZORHostDropTarget : public QObject
{
    Q_OBJECT

public:
    /// \param window    owns this object
    /// \param area      the banner is shown in its middle; not owned
    /// \param commands  not owned
    ZORHostDropTarget(QWidget* window, QWidget* area, ZORHostDocumentCommands* commands);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Sorts the dragged files, once for each drag.
    void Examine(const QMimeData* data);
    void Answer(QDropEvent* event) const;
    void Drop(QDropEvent* event);
    void ShowBanner();
    void HideBanner();
    QString Describe() const;

    QWidget* m_window;                   // not owned
    QWidget* m_area;                     // not owned
    ZORHostDocumentCommands* m_commands; // not owned
    QLabel* m_banner;                    // child of the area
    QStringList m_files;                 // that can be read
    QStringList m_refused;               // names of the others
};
