// Writing the files of documents.

#pragma once

#include <QString>

#include <functional>

class ZORGeoContainerFile;

/// Thread safety: thread-safe; one thread at a time per file.
namespace ZORHostDocumentFile {

/// Writes a container file, all of it or nothing.
/// \param report  called in the same thread with the part that is done, 0 to 1; returns false to cancel. An empty function
///                reports nothing
/// \return whether the file is in its place; false when canceled
/// \throws ZORSysFileException "Cannot write '%1': %2"
bool Write(const ZORGeoContainerFile& content, const QString& fileName,
           const std::function<bool(double)>& report = {});

} // namespace ZORHostDocumentFile
