#include "window/ZORHostIcons.h"

#include <QFile>

QIcon ZORHostIcon(const QString& name)
{
    if (name.isEmpty())
        return {};
    const QString file = QStringLiteral(":/host/icons/%1.svg").arg(name);
    return QIcon(QFile::exists(file) ? file : QStringLiteral(":/host/icons/command.svg"));
}
