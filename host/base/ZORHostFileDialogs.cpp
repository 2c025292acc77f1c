#include "base/ZORHostFileDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostFileDialogs)
};

bool ConfirmReplacing(QWidget* parent, const QString& file)
{
    const QString text =
        Texts::tr("The file '%1' already exists. Replace it?").arg(QDir::toNativeSeparators(file));
    return ZORHostFileDialogs::Ask(parent, Texts::tr("Replace File"), text,
                                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
           == QMessageBox::Yes;
}

} // namespace

QMessageBox::StandardButton ZORHostFileDialogs::Ask(QWidget* parent, const QString& title,
                                                    const QString& text, QMessageBox::StandardButtons buttons,
                                                    QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(QMessageBox::Warning, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(defaultButton);
    return QMessageBox::StandardButton(box.exec());
}

QString ZORHostFileDialogs::ChooseFileToWrite(QWidget* parent, const QString& title, const QString& start,
                                              const QString& filter, const QString& suffix)
{
    QFileInfo proposed(start);
    const QString ending = u'.' + suffix;
    while (true) {
        QFileDialog dialog(parent, title, proposed.absolutePath(), filter);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        // Completed by the dialog itself, which then asks before it replaces the file of the whole name.
        dialog.setDefaultSuffix(suffix);
        dialog.selectFile(proposed.fileName());
        const QString file = dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
        if (file.isEmpty() || file.endsWith(ending, Qt::CaseInsensitive))
            return file;
        // The dialog takes the end of "part.v2" for a suffix.
        proposed = QFileInfo(file + ending);
        if (!proposed.exists() || ConfirmReplacing(parent, proposed.filePath()))
            return proposed.filePath();
    }
}
