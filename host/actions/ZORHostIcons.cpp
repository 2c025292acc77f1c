#include "actions/ZORHostIcons.h"

#include <QFile>

namespace {

QString GetFileName(const char* folder, const QString& name)
{
    return QStringLiteral(":/%1/icons/%2.svg").arg(QLatin1String(folder), name);
}

/// An icon of a file reads it whenever a size is asked for that was not drawn before. The files of a plug-in
/// vanish when it is unloaded, and copies of its icons may stay: they are drawn once and for all.
QIcon DrawAllSizes(const QString& fileName)
{
    constexpr int kSizes[] = {16, 24, 32, 48, 64, 128}; // pixels; sizes between them are scaled down
    const QIcon file(fileName);
    QIcon icon;
    for (const int size : kSizes)
        icon.addPixmap(file.pixmap(QSize(size, size), 1));
    return icon;
}

} // namespace

QIcon ZORHostIcon(const QString& name)
{
    if (name.isEmpty())
        return {};
    if (const QString own = GetFileName("host", name); QFile::exists(own))
        return QIcon(own);
    if (const QString added = GetFileName("zorsdk", name); QFile::exists(added))
        return DrawAllSizes(added);
    return QIcon(GetFileName("host", QStringLiteral("command")));
}
