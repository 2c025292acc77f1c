// Answers modal dialogs on behalf of a script.

#pragma once

#include "script/ZORHostScript.h"

#include <QObject>
#include <QQueue>

#include <functional>

class QDialog;

/// Answers every modal dialog that opens while this object lives with the next answer of its queue. A dialog
/// without answer, or of another kind than the answer is for, is rejected and reported.
class ZORHostModalAnswerer : public QObject
{
    Q_OBJECT

public:
    /// \param playBlock  called for an "answer form" step once its dialog is open: plays the block of the
    /// step in it
    explicit ZORHostModalAnswerer(
        std::function<void(const ZORHostScriptStep& step, QDialog* dialog)> playBlock);
    ~ZORHostModalAnswerer() override;

    /// \param step  an "answer" step with its variables replaced
    void Enqueue(const ZORHostScriptStep& step) { m_queue.enqueue(step); }
    /// The answers nobody has asked for.
    const QQueue<ZORHostScriptStep>& GetQueue() const { return m_queue; }

signals:
    void Failed(const QString& message);
    void Answered(const QString& description);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Answer(QDialog* dialog);
    /// \throws ZORHostScriptError when the answer does not fit the dialog
    void Apply(const ZORHostScriptStep& step, QDialog* dialog);

    std::function<void(const ZORHostScriptStep&, QDialog*)> m_playBlock;
    QQueue<ZORHostScriptStep> m_queue;
};
