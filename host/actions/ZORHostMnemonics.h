// Mnemonics of menus whose texts come from elsewhere.

#pragma once

#include <QSet>
#include <QString>

class QAction;

namespace ZORHostMnemonics {

/// The mnemonic of a menu text, in upper case; null where it has none.
QChar Find(const QString& text);

/// \a text with a mnemonic that is not in \a taken: the first letter of a word where one is free, else any letter or
/// digit. Unchanged where it has one already or where none is free.
QString Add(const QString& text, const QSet<QChar>& taken);

/// Gives \a action a mnemonic that none of \a others has.
void Assign(QAction* action, const QList<QAction*>& others);

} // namespace ZORHostMnemonics
