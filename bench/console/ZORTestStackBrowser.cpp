#include "console/ZORTestStackBrowser.h"

#include <ZORSystem/ZORSysStackMonitor.h>

#include <QComboBox>
#include <QPlainTextEdit>

ZORTestStackBrowser::ZORTestStackBrowser(QComboBox* labelCombo, QComboBox* traceCombo, QPlainTextEdit* text)
    : m_labelCombo(labelCombo)
    , m_traceCombo(traceCombo)
    , m_text(text)
{
}

void ZORTestStackBrowser::RefreshLabels()
{
    m_labelCombo->clear();
    m_labelCombo->addItem(tr("<all labels>"));
    m_labelCombo->addItems(ZORSysStackMonitor::GetStackMonitor()->GetLabels());
}

QStringList ZORTestStackBrowser::GetCurrentLabels() const
{
    if (m_labelCombo->currentIndex() == 0)
        return ZORSysStackMonitor::GetStackMonitor()->GetLabels();
    return {m_labelCombo->currentText()};
}

void ZORTestStackBrowser::RefreshTraces()
{
    m_traceCombo->clear();
    const QStringList labels = GetCurrentLabels();
    for (const QString& label : labels) {
        const auto traces = ZORSysStackMonitor::GetStackMonitor()->GetStackTraces(label);
        int number = 1;
        for (const ZORSysStackTrace& trace : traces) {
            m_traceCombo->addItem(label + QLatin1Char('.') + QString::number(number),
                                  trace.ToSTring(QString(), 0));
            ++number;
        }
    }
}

void ZORTestStackBrowser::RefreshText()
{
    m_text->setPlainText(m_traceCombo->currentData().toString());
}

void ZORTestStackBrowser::ClearCurrentLabel()
{
    const QStringList labels = GetCurrentLabels();
    for (const QString& label : labels)
        ZORSysStackMonitor::GetStackMonitor()->ClearTraces(label);
}
