// Messages above the 3D view that need no answer.

#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;
class QPushButton;

/// A strip with a text, optional buttons and a close button; hidden while there is nothing to say. A second message is put
/// below the first. All files that were not read completely share one line.
class ZORHostNoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit ZORHostNoticeBar(QWidget* parent);

    /// The lines that are shown.
    QStringList GetMessages() const;
    void AddMessage(const QString& message);
    /// Shows a button that emits DetailsRequested().
    void SetDetails(const QString& buttonText);

public slots:
    /// Says that a file was not read completely, with a button that shows what was left out.
    /// \param losses  a sentence each
    void AddLosses(const QString& file, const QStringList& losses);
    /// Shows what was left out of all these files.
    void ShowLosses();
    /// Forgets all messages and hides the strip.
    void Dismiss();

signals:
    void DetailsRequested();

private:
    struct Loss
    {
        QString file;
        QStringList losses;
    };
    void Update();

    QStringList m_messages;
    QList<Loss> m_losses; // the latest ones
    QLabel* m_label;
    QPushButton* m_detailsBtn;
    QPushButton* m_lossesBtn;
};
