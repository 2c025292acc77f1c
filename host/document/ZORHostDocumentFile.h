// Reading and writing the files of documents.

#pragma once

#include <QString>

class ZORFeatContainer;

/// Thread safety: thread of the container.
namespace ZORHostDocumentFile {

/// Writes a container into a file, all of it or nothing.
/// \return the error with the name of the file; empty when it went well
QString Write(const ZORFeatContainer& container, const QString& fileName);

} // namespace ZORHostDocumentFile
