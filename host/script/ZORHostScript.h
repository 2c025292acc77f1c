// A script for the host: what to do, step by step.

#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

/// One line of a script.
struct ZORHostScriptStep
{
    int line = 0; // from 1
    QString verb;
    QStringList arguments;          // variables are not yet replaced
    QList<ZORHostScriptStep> block; // of "answer form" and "repeat": the lines up to its "end"
};

/// A script: one step a line, words separated by blanks, words with blanks in double quotes (with the escapes
/// `\"` `\\` `\n` `\t`), comments from a # at the beginning of a word to the end of the line. docs/scripting.md lists
/// the steps.
class ZORHostScript
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostScript)

public:
    /// \throws ZORSysFileOpenException; ZORSysFileException "<file>:<line>: <what is wrong>" for an unknown
    /// step, a
    ///         wrong number of words, an open quote or block
    static ZORHostScript Load(const QString& fileName);
    /// \param name  of the script, for messages
    /// \throws ZORSysFileException as Load()
    static ZORHostScript Parse(const QString& text, const QString& name);

    const QString& GetName() const { return m_name; }
    const QList<ZORHostScriptStep>& GetSteps() const { return m_steps; }

    /// Returns the words of one line.
    /// \throws ZORSysFileException without file and line
    static QStringList Split(const QString& line);

private:
    QString m_name;
    QList<ZORHostScriptStep> m_steps;
};
