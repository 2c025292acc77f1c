// What a translation job does, in a thread or in another process.

#pragma once

class QByteArray;
class ZORWorkContext;
class ZORWorkResult;

/// Writes the parts of a source file, and a report, to the work directory.
/// \param task  a ZORNestTranslationTask
/// \return the part files, and the lines of the report as bytes (ZORNestJobBytes::ReadReport())
/// \throws ZORWorkCanceled; ZORSysException, for what is wrong with the source, the settings or the task
ZORWorkResult ZORNestRunTranslation(const ZORWorkContext& context, const QByteArray& task);
