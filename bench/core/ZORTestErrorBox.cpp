#include "core/ZORTestErrorBox.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORTestErrorBox)
};

} // namespace

void ZORTestShowErrorBox(QWidget* parent, const QString& message)
{
    QMessageBox box(QMessageBox::Critical, Texts::tr("Error"), message, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}
