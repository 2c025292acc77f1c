// What a script can ask.

#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace ZORHostScriptQuery {

/// Evaluates a query; docs/scripting.md lists them.
/// \param window  where widgets and actions are looked for; may be null
/// \param words   name of the query and its arguments
/// \throws ZORHostScriptError for an unknown query, missing arguments, or a thing that is not there
QString Evaluate(QWidget* window, const QStringList& words);

/// Compares as "is", "not", "contains", "above" or "below" say; the last two compare numbers.
/// \throws ZORHostScriptError for an unknown comparison, or a value that is no number where one is needed
bool Compare(const QString& actual, const QString& comparison, const QString& expected);

} // namespace ZORHostScriptQuery
