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

/// What a query has given, compared with a value.
struct Comparison
{
    QString query;
    QString actual;
    QString verb; // "is", "not", "contains", "above" or "below"; the last two compare numbers
    QString expected;
    bool isMet = false;
};

/// Evaluates a query and compares what it gives.
/// \param window  as for Evaluate()
/// \param words   at least three: the query, the verb and the value
/// \throws ZORHostScriptError as Evaluate(), for an unknown verb, or for a value that is not a number where one is needed
Comparison Compare(QWidget* window, const QStringList& words);

} // namespace ZORHostScriptQuery
