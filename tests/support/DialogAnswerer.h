// Answers modal dialogs other than message boxes during a test.

#pragma once

#include "support/Printers.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>

class QDialog;
class QWidget;

/// Answers every modal dialog that opens while this object lives with the next queued answer, and keeps
/// what the dialog showed. A dialog without an answer, or of another class than the answer is for, is
/// rejected and fails the test, and so does an answer that no dialog asked for. No test waits for a
/// person. Message boxes are the business of MessageBoxCatcher.
class DialogAnswerer final : public QObject
{
    Q_OBJECT

public:
    /// What a dialog showed when it opened. Fields that the kind of dialog does not have are empty.
    struct Shown
    {
        QByteArray className;
        QString title;
        const QWidget* parent = nullptr; // for comparison only, may be deleted
        QString label;                   // input dialogs
        QStringList items;               // input dialogs with a list
        int currentIndex = -1;           // input dialogs with a list
        bool isEditable = false;         // input dialogs with a list
        QString directory;               // file dialogs: absolute path
        QString fileName;                // file dialogs: text of the name field
        QStringList filters;             // file dialogs
        QString selectedFilter;          // file dialogs
        bool isSaving = false;           // file dialogs
        QColor color;                    // colour dialogs
        int colorOptions = 0;            // colour dialogs: QColorDialog::ColorDialogOptions

        friend bool operator==(const Shown&, const Shown&) = default;
    };

    DialogAnswerer();
    ~DialogAnswerer() override;

    /// QInputDialog: chooses the list entry \a text and presses OK. Fails when it is not listed.
    void AnswerItem(const QString& text);
    /// QInputDialog: types \a text and presses OK.
    void AnswerText(const QString& text);
    void CancelInput();

    /// QFileDialog: accepts \a path. \a afterwards runs when the dialog is accepted and before its caller
    /// sees the path, for example to make the file vanish. An existing file is overwritten without a query.
    void AnswerFile(const QString& path, const std::function<void()>& afterwards = {});
    void CancelFile();

    /// QColorDialog.
    void AnswerColor(const QColor& color);
    void CancelColor();

    /// Any other modal dialog: \a drive fills in the dialog and closes it, by pressing its buttons.
    void Answer(const QByteArray& className, const std::function<void(QDialog*)>& drive);
    /// Presses OK (accepts) or rejects without changing anything.
    void Accept(const QByteArray& className);
    void Cancel(const QByteArray& className);

    /// The dialogs shown since the last call, oldest first.
    QList<Shown> Take();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Reply
    {
        QByteArray className;
        std::function<void(QDialog*)> drive;
    };

    void ReplyTo(QDialog* dialog);

    QList<Reply> m_replies;
    QList<Shown> m_shown;
};
