// Documents with unsaved changes of programs that had to end without a question.

#pragma once

#include <QString>
#include <QStringList>

/// Files with rescued documents, in the folder "rescued" of the user's data folder. They stay until somebody removes them.
namespace ZORHostRescue {

/// Returns the path of a file that does not exist yet and that no other process chooses, in a folder that exists, for this
/// user alone.
QString MakePath();
/// Notes beside the document that it was saved, for the next start, whatever its settings are.
void Remember(const QString& path);
/// Returns what the user has to know about documents that were rescued since the last call, one line each, and forgets them.
QStringList TakeNotices();

} // namespace ZORHostRescue
