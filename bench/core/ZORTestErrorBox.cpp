#include "core/ZORTestErrorBox.h"

#include <QCoreApplication>
#include <QMessageBox>

void ZORTestShowErrorBox(QWidget* parent, const QString& message)
{
    QMessageBox box(QMessageBox::Critical, QCoreApplication::translate("ZORTestErrorBox", "Error"), message,
                    QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}
