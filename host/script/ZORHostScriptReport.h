// What a script run prints.

#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QStringList>
#include <QTextStream>

class QIODevice;

/// Prints what happens as it happens, and a summary at the end: sections with their times, notes, pictures, failures.
class ZORHostScriptReport
{
public:
    /// \param out  null: standard output. Not owned, must outlive the report.
    explicit ZORHostScriptReport(QIODevice* out);

    /// \param name  of the script, for the summary and in front of failures
    void Start(const QString& name);
    void Print(const QString& text);
    /// Prints a line and repeats it in the summary.
    void Note(const QString& text);
    void Fail(int line, const QString& message);
    void AddPicture(const QString& absolutePath);
    void BeginSection(const QString& title);
    void CountStep() { ++m_numSteps; }
    void CountExpectation() { ++m_numExpectations; }

    /// "<name>:<line>: <message>" each.
    const QStringList& GetFailures() const { return m_failures; }
    void PrintSummary();

private:
    struct Section
    {
        QString title;
        qint64 milliseconds = 0;
    };
    void EndSection();

    QTextStream m_out;
    QString m_name;
    QElapsedTimer m_total;
    QElapsedTimer m_sectionTimer;
    QList<Section> m_sections;
    QStringList m_notes;
    QStringList m_pictures;
    QStringList m_failures;
    int m_numSteps = 0;
    int m_numExpectations = 0;
};
