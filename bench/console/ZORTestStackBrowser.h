// The recorded stack traces, by label.

#pragma once

#include <QCoreApplication>
#include <QStringList>

class QComboBox;
class QPlainTextEdit;

/// Shows the SDK's stack monitor in two combo boxes, labels and traces, and a text area.
class ZORTestStackBrowser
{
    Q_DECLARE_TR_FUNCTIONS(ZORTestStackBrowser)

public:
    /// The widgets are not owned.
    ZORTestStackBrowser(QComboBox* labelCombo, QComboBox* traceCombo, QPlainTextEdit* text);
    Q_DISABLE_COPY_MOVE(ZORTestStackBrowser)

    void RefreshLabels();
    /// Lists the traces of the current label, or of all labels.
    void RefreshTraces();
    /// Shows the text of the current trace.
    void RefreshText();
    /// Forgets the traces of the current label, or of all labels.
    void ClearCurrentLabel();

private:
    QStringList GetCurrentLabels() const;

    QComboBox* m_labelCombo; // not owned
    QComboBox* m_traceCombo; // not owned
    QPlainTextEdit* m_text;  // not owned
};
