// Files made by the tests of the exchange.

#pragma once

#include "support/StlTetrahedron.h"

#include <QByteArray>
#include <QString>

/// Writes \a content to a new file; a test failure when that is impossible.
void WriteFile(const QString& path, const QByteArray& content);
/// The content of a file; a test failure when it cannot be read.
QByteArray ReadFile(const QString& path);
