// STL files made by the tests of the exchange.

#pragma once

#include <QByteArray>
#include <QString>

/// An ASCII solid: a tetrahedron with its corners in the origin and at 1 on the axes; four facets.
QByteArray MakeAsciiTetrahedron();

/// Writes \a content to a new file; a test failure when that is impossible.
void WriteFile(const QString& path, const QByteArray& content);
/// The content of a file; a test failure when it cannot be read.
QByteArray ReadFile(const QString& path);
