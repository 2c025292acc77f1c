#include "ZORCmnPlainText.h"

#include <QTextDocument>

QString ZORCmnPlainText::ToToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QMessageBox::StandardButton ZORCmnPlainText::ShowBox(QMessageBox::Icon icon, QWidget* parent,
                                                     const QString& title, const QString& text,
                                                     QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    return QMessageBox::StandardButton(box.exec());
}
