// Text dump of a nesting result.

#pragma once

class QString;
class ZORNestResult;

/// Writes the content of \a result to the debug log, a message per line, and draws its segments into the debug
/// visualization. Developers compare dumps by tools: the lines do not change.
/// \param path  shown as the file of the result
void ZORTestDumpResult(const ZORNestResult& result, const QString& path);
