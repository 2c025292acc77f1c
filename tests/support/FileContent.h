// What is in files.

#pragma once

#include <QByteArray>
#include <QFile>

/// Returns the content of a file; "unreadable" when it cannot be opened.
inline QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}
