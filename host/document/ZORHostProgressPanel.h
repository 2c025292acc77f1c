// Progress of what takes long, with a button that cancels it.

#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

/// A text, a bar and a button for the status bar. Hidden unless something is going on that takes longer than a moment.
///
/// Thread safety: main thread only.
class ZORHostProgressPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ZORHostProgressPanel(QWidget* parent);

    /// Shows new work soon, at 0 percent.
    /// \param text  says what is going on: "Reading 'part.stl'..."
    void Begin(const QString& text);
    /// \param progress  part that is done, 0 to 1
    void SetProgress(double progress);
    /// Hides the panel.
    void End();

signals:
    void CancelRequested();

private:
    void OnCancelClicked();

    QLabel* m_label;
    QProgressBar* m_bar;
    QPushButton* m_cancelBtn;
    QTimer* m_patience;
};
