// Which exceptions are under way in a thread.

#pragma once

#include <QString>

#include <optional>

/// The API trace sees a call end by an exception without seeing the exception itself: during unwinding
/// there is no portable way to reach it. These functions tell what was thrown.
namespace ZORSysExceptionWatch {

/// A mark of the present, for GetMessageSince().
quint64 GetMark();

/// Message of the newest exception that this thread constructed after \a mark and that still lives; none
/// when there is no such ZORSysException, for example when something else was thrown.
std::optional<QString> GetMessageSince(quint64 mark);

} // namespace ZORSysExceptionWatch
