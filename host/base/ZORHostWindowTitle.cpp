#include "base/ZORHostWindowTitle.h"

#include <QGuiApplication>
#include <QWidget>

namespace {

const QLatin1String kMark("[*]");
const QLatin1String kSeparator(" - ");

} // namespace

QString ZORHostWindowTitle::Make(const QString& documentName)
{
    QString name = documentName;
    name.replace(kMark, QLatin1String("[*][*]")); // which Qt shows as one
    return name + kMark + kSeparator + QGuiApplication::applicationDisplayName();
}

QString ZORHostWindowTitle::GetShown(const QWidget* window)
{
    const QString title = window->windowTitle();
    const QString ending = kMark + kSeparator + QGuiApplication::applicationDisplayName();
    if (!title.endsWith(ending))
        return title;
    QString shown = title.chopped(ending.size());
    shown.replace(QLatin1String("[*][*]"), kMark);
    return shown + (window->isWindowModified() ? QStringLiteral("*") : QString()) + ending.mid(kMark.size());
}

QString ZORHostWindowTitle::GetKind(const QWidget* window)
{
    const QString name = QGuiApplication::applicationDisplayName();
    return window->windowTitle().endsWith(kMark + kSeparator + name) ? name : window->windowTitle();
}
