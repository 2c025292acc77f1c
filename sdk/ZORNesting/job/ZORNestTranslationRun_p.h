// What a translation job does, in a thread or in another process.

#pragma once

class QByteArray;
class ZORWorkContext;
class ZORWorkResult;

/// Writes the parts of a source file, and a report, to the work directory.
/// \param task  a ZORNestTranslationTask
/// \return the part files, none where the source or the settings are bad, and a ZORNestTranslationOutcome
/// \throws ZORWorkCanceled; ZORSysException, for what is wrong with the task; what else the provider throws
ZORWorkResult ZORNestRunTranslation(const ZORWorkContext& context, const QByteArray& task);
