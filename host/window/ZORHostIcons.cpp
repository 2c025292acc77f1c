#include "window/ZORHostIcons.h"

#include <QFile>

QIcon ZORHostIcon(const QString& name)
{
    if (name.isEmpty())
        return {};
    for (const char* folder : {"host", "zorsdk"}) {
        const QString file = QStringLiteral(":/%1/icons/%2.svg").arg(QLatin1String(folder), name);
        if (QFile::exists(file))
            return QIcon(file);
    }
    return QIcon(QStringLiteral(":/host/icons/command.svg"));
}
