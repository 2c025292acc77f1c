// What the window "Results" can do with its report.

#pragma once

#include <QObject>
#include <QString>

class QPoint;
class QTextDocument;
class QTextEdit;

/// Makes the pictures of a report as wide as its text edit, and adds "Save Report As..." to the context menu: PDF, which
/// any viewer prints, or HTML. Ctrl+S does the same.
class ZORTestReportView : public QObject
{
    Q_OBJECT

public:
    /// \param edit  shows the report; owns this object
    explicit ZORTestReportView(QTextEdit* edit);

    /// Replaces the report.
    /// \param html  as it is saved
    void SetReport(const QString& html);

    /// Scales all pictures by the same factor, so that the widest of them has this width.
    /// \param width  pixels of the document
    static void FitPictures(QTextDocument* document, double width);
    /// A4, with the pictures as wide as a page.
    static QByteArray MakePdf(const QTextDocument& report);

public slots:
    void OnSaveTriggered();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fit();
    void OnContextMenuRequested(const QPoint& position);

    QTextEdit* m_edit; // not owned
    QString m_html;
};
