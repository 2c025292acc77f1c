// One action of the random user, as data.

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// An action that can be written down and repeated: what is done, and to what, by names instead of pointers.
///
/// As text an action is one line of words separated by tabulators; control characters inside a word are
/// escaped.
struct RandomUserAction
{
    QString kind; // see RandomUserHand
    QStringList arguments;

    QString ToLine() const;
    /// The action of a line that ToLine() has made; a line without words gives an action without kind.
    static RandomUserAction FromLine(const QString& line);

    friend bool operator==(const RandomUserAction&, const RandomUserAction&) = default;
};

/// Lines that are empty or begin with '#' are skipped.
/// \return empty where the file cannot be read
QList<RandomUserAction> ReadRandomUserActions(const QString& fileName);
/// \return whether the file was written
bool WriteRandomUserActions(const QString& fileName, const QList<RandomUserAction>& actions);
