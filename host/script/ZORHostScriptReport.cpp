#include "script/ZORHostScriptReport.h"

#include <QIODevice>

#include <cstdio>
#include <utility>

namespace {

/// Returns seconds for a column of 8 characters.
QString ToSeconds(qint64 milliseconds)
{
    return QString::number(double(milliseconds) / 1000, 'f', 3).rightJustified(8);
}

} // namespace

ZORHostScriptReport::ZORHostScriptReport(QIODevice* out)
{
    if (out)
        m_out.setDevice(out);
}

void ZORHostScriptReport::Start(const QString& name)
{
    m_name = name;
    m_total.start();
}

void ZORHostScriptReport::Print(const QString& text)
{
    if (m_out.device()) {
        m_out << text << Qt::endl;
        return;
    }
    std::fprintf(stdout, "%s\n", qPrintable(text));
    std::fflush(stdout);
}

void ZORHostScriptReport::Note(const QString& text)
{
    m_notes.append(text);
    Print(QStringLiteral("  %1").arg(text));
}

void ZORHostScriptReport::Fail(int line, const QString& message)
{
    const QString text = QStringLiteral("%1:%2: %3").arg(m_name, QString::number(line), message);
    m_failures.append(text);
    Print(QStringLiteral("  FAILED %1").arg(text));
}

void ZORHostScriptReport::AddPicture(const QString& absolutePath)
{
    m_pictures.append(absolutePath);
}

void ZORHostScriptReport::BeginSection(const QString& title)
{
    EndSection();
    m_sections.append({title});
    m_sectionTimer.start();
    Print(title);
}

void ZORHostScriptReport::EndSection()
{
    if (!m_sections.isEmpty() && m_sectionTimer.isValid())
        m_sections.last().milliseconds = m_sectionTimer.elapsed();
    m_sectionTimer.invalidate();
}

void ZORHostScriptReport::PrintSummary()
{
    EndSection();
    Print(QString());
    Print(QStringLiteral("Summary of %1").arg(m_name));
    for (const Section& section : std::as_const(m_sections))
        Print(QStringLiteral("  %1 s  %2").arg(ToSeconds(section.milliseconds), section.title));
    Print(QStringLiteral("  %1 s  in all, %2 steps, %3 expectations")
              .arg(ToSeconds(m_total.elapsed()), QString::number(m_numSteps),
                   QString::number(m_numExpectations)));
    for (const QString& note : std::as_const(m_notes))
        Print(QStringLiteral("  %1").arg(note));
    for (const QString& picture : std::as_const(m_pictures))
        Print(QStringLiteral("  picture %1").arg(picture));
    for (const QString& failure : std::as_const(m_failures))
        Print(QStringLiteral("  FAILED %1").arg(failure));
    Print(m_failures.isEmpty() ? QStringLiteral("  All as expected.")
                               : QStringLiteral("  %1 failure(s).").arg(m_failures.size()));
}
