// Messages above the 3D view that need no answer.

#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;
class QPushButton;

/// A strip with a text, an optional button and a close button; hidden while there is nothing to say. A second
/// message is put below the first.
class ZORHostNoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit ZORHostNoticeBar(QWidget* parent);

    QStringList GetMessages() const { return m_messages; }
    void AddMessage(const QString& message);
    /// Shows a button that emits DetailsRequested().
    void SetDetails(const QString& buttonText);

public slots:
    /// Forgets all messages and hides the strip.
    void Dismiss();

signals:
    void DetailsRequested();

private:
    QStringList m_messages;
    QLabel* m_label;
    QPushButton* m_detailsBtn;
};
