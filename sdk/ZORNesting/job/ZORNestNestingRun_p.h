// What a nesting job does, in a thread or in another process.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

class QByteArray;
class ZORWorkContext;
class ZORWorkResult;

/// Nests on as many threads as the machine has processors. Reports progress to \a context, and each better layout that
/// has been proved as an interim result.
/// \param task  a ZORNestNestingTask
/// \return a ZORNestNestingOutcome as bytes
/// \throws ZORWorkCanceled; ZORSysFileException when a file to be kept cannot be written, or the task is damaged
ZORNESTING_EXPORT ZORWorkResult ZORNestRunNesting(const ZORWorkContext& context, const QByteArray& task);

/// Makes the outcome of an interim result that another process has left behind, after proving its layout again.
/// \throws ZORSysException "the last layout does not pass the check: %1"; otherwise as ZORNestRunNesting()
ZORNESTING_EXPORT ZORWorkResult ZORNestCompleteNesting(const ZORWorkContext& context, const QByteArray& task,
                                                       const QByteArray& interim);
