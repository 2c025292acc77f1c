// Why jobs fail, in words.

#pragma once

#include <QString>

namespace ZORWorkFailure {

/// Of a job that was canceled.
QString GetCanceledReason();
/// Of the exception that is being handled; none of ZORWorkCanceled.
QString GetReasonOfCurrentException();
/// Of a job in a helper process that needed more than it may use.
/// \param limit  bytes; 0 where there was none
QString GetMemoryReason(qint64 limit);
/// Of a job whose helper process has ended.
/// \param status  of waitpid(); -1 when it is unknown
/// \param limit   as above
QString GetReasonOfEnd(int status, qint64 limit);

/// Exit code of a helper process that has no memory for more words.
constexpr int kMemoryExitCode = 76;

} // namespace ZORWorkFailure
