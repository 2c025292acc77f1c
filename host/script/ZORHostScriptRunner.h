// Plays scripts in the running host.

#pragma once

#include "script/ZORHostModalAnswerer.h"
#include "script/ZORHostScript.h"
#include "script/ZORHostScriptReport.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

class ZORHostView3D;

/// Plays the steps of a script one by one from the event loop and prints what happens.
///
/// An expectation that is not met is a failure, and the script goes on; a step that cannot be done, or an
/// unexpected modal dialog, is a failure that ends it. At the end comes a summary: sections with their times,
/// pictures written, failures.
class ZORHostScriptRunner : public QObject
{
    Q_OBJECT

public:
    /// \param view  of "screenshot view"; not owned
    /// \param out   where the report goes; null: standard output. Must outlive the runner.
    explicit ZORHostScriptRunner(ZORHostView3D* view, QIODevice* out = nullptr);
    ~ZORHostScriptRunner() override;

    /// Variables replace ${name} in the words of steps.
    void SetVariable(const QString& name, const QString& value) { m_variables[name] = value; }

    /// Starts; Finished() comes from the event loop. One script per runner.
    void Start(const ZORHostScript& script);

    bool IsFinished() const { return m_finished; }
    const QStringList& GetFailures() const { return m_report.GetFailures(); }

signals:
    void Finished(bool success);

private:
    struct Sequence; // steps that are being played in one event loop
    enum class Progress { Done, Again };

    void Continue(const std::shared_ptr<Sequence>& sequence, int delay = 0);
    void Advance(const std::shared_ptr<Sequence>& sequence);
    void PlayBlock(const ZORHostScriptStep& step, QDialog* dialog);
    void EndBlock(const std::shared_ptr<Sequence>& sequence);
    Progress Play(const ZORHostScriptStep& step, Sequence& sequence);
    void PlayAct(const ZORHostScriptStep& step, Sequence& sequence);
    void PlayExpect(const ZORHostScriptStep& step, Sequence& sequence);
    /// Puts the steps of every round behind the step itself.
    static void Unroll(const ZORHostScriptStep& step, Sequence& sequence);
    Progress PlayWait(const ZORHostScriptStep& step, Sequence& sequence);
    Progress PlayIn(const ZORHostScriptStep& step, Sequence& sequence);
    void TakeScreenshot(const QString& what, const QString& fileName, Sequence& sequence);
    ZORHostScriptStep Expand(const ZORHostScriptStep& step) const;
    QString Expand(const QString& word) const;
    QWidget* GetWindow(const Sequence& sequence) const;

    /// Fails and ends the script, also from inside a modal dialog.
    void Abort(int line, const QString& message);
    void Finish();

    ZORHostView3D* m_view; // not owned
    ZORHostScriptReport m_report;
    ZORHostModalAnswerer m_answerer;
    QHash<QString, QString> m_variables;
    QTimer m_watchdog;
    QList<std::shared_ptr<Sequence>> m_running; // the innermost event loop last
    int m_currentLine = 0;
    bool m_aborted = false;
    bool m_finished = false;
};
