#include "script/ZORHostScriptRunner.h"

#include "script/ZORHostScriptError.h"
#include "script/ZORHostScriptQuery.h"
#include "script/ZORHostWidgetAccess.h"
#include "script/ZORHostWidgetFinder.h"
#include "view/ZORHostView3D.h"

#include <ZORSystem/ZORSysReplacedFile.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QKeySequence>
#include <QRegularExpression>
#include <QScreen>

#include <cstdlib>
#include <new>

namespace {

constexpr int kPollMilliseconds = 10;
constexpr double kDefaultWaitSeconds = 10;
constexpr double kDefaultTimeoutSeconds = 300;
constexpr int kMaximumRound = 10000;

double ToSeconds(const QString& text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || seconds < 0)
        throw ZORHostScriptError(QStringLiteral("'%1' is no number of seconds").arg(text));
    return seconds;
}

int ToRound(const QString& text)
{
    bool isNumber = false;
    const int round = text.toInt(&isNumber);
    if (!isNumber || std::abs(round) > kMaximumRound)
        throw ZORHostScriptError(QStringLiteral("'%1' is no whole number of at most %2")
                                     .arg(text, QString::number(kMaximumRound)));
    return round;
}

void CheckUsable(const QWidget* widget, const QString& name)
{
    if (!widget->isVisible())
        throw ZORHostScriptError(QStringLiteral("'%1' is not visible").arg(name));
    if (!widget->isEnabled())
        throw ZORHostScriptError(QStringLiteral("'%1' is disabled").arg(name));
}

void Click(QWidget* window, const QString& name)
{
    QWidget* widget = ZORHostWidgetFinder::FindWidget(window, name);
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (!button)
        throw ZORHostScriptError(QStringLiteral("'%1' is no button").arg(name));
    CheckUsable(button, name);
    button->click();
}

void Trigger(QWidget* window, const QString& name)
{
    QAction* action = ZORHostWidgetFinder::FindAction(window, name);
    if (!action->isEnabled())
        throw ZORHostScriptError(QStringLiteral("the action '%1' is disabled").arg(name));
    action->trigger();
}

void PressKey(QWidget* window, const QString& keys, const QString& widgetName)
{
    QWidget* receiver =
        widgetName.isEmpty() ? window->focusWidget() : ZORHostWidgetFinder::FindWidget(window, widgetName);
    if (!receiver)
        receiver = window;
    const QKeySequence sequence(keys, QKeySequence::PortableText);
    if (sequence.isEmpty() || sequence[0].key() == Qt::Key_unknown)
        throw ZORHostScriptError(QStringLiteral("'%1' is no key").arg(keys));
    for (int i = 0; i < sequence.count(); ++i) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, sequence[uint(i)].key(), sequence[uint(i)].keyboardModifiers());
            QApplication::sendEvent(receiver, &event);
        }
    }
}

} // namespace

struct ZORHostScriptRunner::Sequence
{
    QList<ZORHostScriptStep> steps;
    qsizetype next = 0;
    QPointer<QWidget> window; // where widgets are looked for
    QPointer<QDialog> dialog; // of a block: the modal dialog it plays in
    int line = 0;             // of a block: its first line
    QElapsedTimer waiting;    // since the next step was first tried

    bool HasWaited(double seconds) const { return waiting.hasExpired(qint64(seconds * 1000)); }
};

ZORHostScriptRunner::ZORHostScriptRunner(ZORHostView3D* view, QIODevice* out)
    : m_view(view)
    , m_report(out)
    , m_answerer([this](const ZORHostScriptStep& step, QDialog* dialog) { PlayBlock(step, dialog); })
{
    connect(&m_answerer, &ZORHostModalAnswerer::Failed, this,
            [this](const QString& message) { Abort(m_currentLine, message); });
    connect(&m_answerer, &ZORHostModalAnswerer::Answered, this, [this](const QString& description) {
        m_report.Print(QStringLiteral("  answered %1").arg(description));
    });
    m_watchdog.setSingleShot(true);
    connect(&m_watchdog, &QTimer::timeout, this, [this] {
        Abort(m_currentLine,
              QStringLiteral("the script took longer than %1 s").arg(m_watchdog.interval() / 1000.0));
    });
}

ZORHostScriptRunner::~ZORHostScriptRunner() = default;

void ZORHostScriptRunner::Start(const ZORHostScript& script)
{
    m_report.Start(QFileInfo(script.GetName()).fileName());
    m_watchdog.start(int(kDefaultTimeoutSeconds * 1000));
    auto sequence = std::make_shared<Sequence>();
    sequence->steps = script.GetSteps();
    m_running.append(sequence);
    Continue(sequence);
}

void ZORHostScriptRunner::Continue(const std::shared_ptr<Sequence>& sequence, int delay)
{
    QTimer::singleShot(delay, this, [this, sequence] { Advance(sequence); });
}

void ZORHostScriptRunner::Advance(const std::shared_ptr<Sequence>& sequence)
{
    if (m_aborted)
        return;
    if (sequence->next >= sequence->steps.size()) {
        if (sequence->line > 0)
            EndBlock(sequence);
        else
            Finish();
        return;
    }
    const ZORHostScriptStep step = Expand(sequence->steps[sequence->next]);
    m_currentLine = step.line;
    if (!sequence->waiting.isValid())
        sequence->waiting.start();
    Progress progress = Progress::Done;
    try {
        progress = Play(step, *sequence);
    } catch (const ZORSysException& exception) {
        Abort(step.line, exception.GetMessage());
        return;
    } catch (const std::bad_alloc&) {
        Abort(step.line, QStringLiteral("there is not enough memory for this step"));
        return;
    } catch (const std::exception& exception) {
        Abort(step.line, QString::fromLocal8Bit(exception.what()));
        return;
    }
    if (progress == Progress::Done) {
        ++sequence->next;
        m_report.CountStep();
        sequence->waiting.invalidate();
    }
    Continue(sequence, progress == Progress::Done ? 0 : kPollMilliseconds);
}

void ZORHostScriptRunner::PlayBlock(const ZORHostScriptStep& step, QDialog* dialog)
{
    auto sequence = std::make_shared<Sequence>();
    sequence->steps = step.block;
    sequence->window = dialog;
    sequence->dialog = dialog;
    sequence->line = step.line;
    m_running.append(sequence);
    Continue(sequence);
}

void ZORHostScriptRunner::EndBlock(const std::shared_ptr<Sequence>& sequence)
{
    m_running.removeOne(sequence);
    if (sequence->dialog && sequence->dialog->isVisible())
        Abort(sequence->line, QStringLiteral("the dialog '%1' is still open at the end of its block")
                                  .arg(sequence->dialog->windowTitle()));
}

ZORHostScriptRunner::Progress ZORHostScriptRunner::Play(const ZORHostScriptStep& step, Sequence& sequence)
{
    if (step.verb == QLatin1String("in"))
        return PlayIn(step, sequence);
    if (step.verb == QLatin1String("wait"))
        return PlayWait(step, sequence);
    if (step.verb == QLatin1String("repeat"))
        Unroll(step, sequence);
    else if (step.verb == QLatin1String("expect"))
        PlayExpect(step, sequence);
    else
        PlayAct(step, sequence);
    return Progress::Done;
}

void ZORHostScriptRunner::PlayAct(const ZORHostScriptStep& step, Sequence& sequence)
{
    const QStringList& words = step.arguments;
    if (step.verb == QLatin1String("section"))
        m_report.BeginSection(words[0]);
    else if (step.verb == QLatin1String("print"))
        m_report.Print(words[0]);
    else if (step.verb == QLatin1String("note"))
        m_report.Note(words[0]);
    else if (step.verb == QLatin1String("timeout"))
        m_watchdog.start(int(ToSeconds(words[0]) * 1000));
    else if (step.verb == QLatin1String("answer"))
        m_answerer.Enqueue(step);
    else if (step.verb == QLatin1String("let"))
        m_variables[words[0]] = ZORHostScriptQuery::Evaluate(sequence.window, words.mid(1));
    else if (step.verb == QLatin1String("trigger"))
        Trigger(sequence.window, words[0]);
    else if (step.verb == QLatin1String("screenshot"))
        TakeScreenshot(words[0], words[1], sequence);
    else if (step.verb == QLatin1String("click"))
        Click(GetWindow(sequence), words[0]);
    else if (step.verb == QLatin1String("set"))
        ZORHostWidgetAccess::SetValue(ZORHostWidgetFinder::FindWidget(GetWindow(sequence), words[0]),
                                      words[1]);
    else if (step.verb == QLatin1String("edit"))
        ZORHostWidgetAccess::SetCell(ZORHostWidgetFinder::FindWidget(GetWindow(sequence), words[0]), words[1],
                                     words[2], words[3]);
    else if (step.verb == QLatin1String("select"))
        ZORHostWidgetAccess::SelectRows(ZORHostWidgetFinder::FindWidget(GetWindow(sequence), words[0]),
                                        words.mid(1));
    else if (step.verb == QLatin1String("key"))
        PressKey(GetWindow(sequence), words[0], words.value(1));
    else
        GetWindow(sequence)->close(); // "close", the last one there is
}

ZORHostScriptRunner::Progress ZORHostScriptRunner::PlayIn(const ZORHostScriptStep& step, Sequence& sequence)
{
    const QString& name = step.arguments[0];
    sequence.window = ZORHostWidgetFinder::FindWindow(name);
    if (sequence.window)
        return Progress::Done;
    if (sequence.HasWaited(kDefaultWaitSeconds))
        throw ZORHostScriptError(QStringLiteral("no window '%1'").arg(name));
    return Progress::Again;
}

void ZORHostScriptRunner::Unroll(const ZORHostScriptStep& step, Sequence& sequence)
{
    const int first = ToRound(step.arguments[1]);
    const int last = ToRound(step.arguments[2]);
    QList<ZORHostScriptStep> rounds;
    for (int round = first; round <= last; ++round) {
        rounds.append({step.line,
                       QStringLiteral("let"),
                       {step.arguments[0], QStringLiteral("text"), QString::number(round)},
                       {}});
        rounds.append(step.block);
    }
    sequence.steps = sequence.steps.first(sequence.next + 1) + rounds + sequence.steps.mid(sequence.next + 1);
}

ZORHostScriptRunner::Progress ZORHostScriptRunner::PlayWait(const ZORHostScriptStep& step, Sequence& sequence)
{
    const double seconds = ToSeconds(step.arguments[0]);
    const auto comparison = ZORHostScriptQuery::Compare(sequence.window, step.arguments.mid(1));
    if (comparison.isMet)
        return Progress::Done;
    if (sequence.HasWaited(seconds)) {
        throw ZORHostScriptError(QStringLiteral("waited %1 s: %2 is '%3', wanted: %4 '%5'")
                                     .arg(step.arguments[0], comparison.query, comparison.actual,
                                          comparison.verb, comparison.expected));
    }
    return Progress::Again;
}

void ZORHostScriptRunner::PlayExpect(const ZORHostScriptStep& step, Sequence& sequence)
{
    m_report.CountExpectation();
    const auto comparison = ZORHostScriptQuery::Compare(sequence.window, step.arguments);
    if (!comparison.isMet) {
        m_report.Fail(step.line,
                      QStringLiteral("%1 is '%2', expected: %3 '%4'")
                          .arg(comparison.query, comparison.actual, comparison.verb, comparison.expected));
    }
}

void ZORHostScriptRunner::TakeScreenshot(const QString& what, const QString& fileName, Sequence& sequence)
{
    QImage picture;
    if (what == QLatin1String("view"))
        picture = m_view->RenderPicture(m_view->GetDevicePixels(), m_view->devicePixelRatioF());
    else if (what == QLatin1String("window"))
        picture = GetWindow(sequence)->grab().toImage();
    else if (what == QLatin1String("screen"))
        picture = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    else
        throw ZORHostScriptError(
            QStringLiteral("a picture of '%1' cannot be taken: view, window or screen").arg(what));
    QDir().mkpath(QFileInfo(fileName).absolutePath());
    QByteArray contents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG"))
        throw ZORHostScriptError(QStringLiteral("cannot write the picture '%1': it is empty").arg(fileName));
    const QString reason = ZORSysReplacedFile::Replace(fileName, contents);
    if (!reason.isEmpty())
        throw ZORHostScriptError(QStringLiteral("cannot write the picture '%1': %2").arg(fileName, reason));
    m_report.AddPicture(QFileInfo(fileName).absoluteFilePath());
    m_report.Print(QStringLiteral("  picture %1 (%2 x %3)")
                       .arg(fileName, QString::number(picture.width()), QString::number(picture.height())));
}

ZORHostScriptStep ZORHostScriptRunner::Expand(const ZORHostScriptStep& step) const
{
    ZORHostScriptStep result = step;
    for (QString& word : result.arguments)
        word = Expand(word);
    return result;
}

QString ZORHostScriptRunner::Expand(const QString& word) const
{
    static const QRegularExpression pattern(QStringLiteral(R"(\$\{(\w+)\})"));
    QString result;
    qsizetype end = 0;
    for (auto matches = pattern.globalMatch(word); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += word.mid(end, match.capturedStart() - end);
        // An unknown variable stays as it is and shows in the message of the step.
        result += m_variables.value(match.captured(1), match.captured(0));
        end = match.capturedEnd();
    }
    return result + word.mid(end);
}

QWidget* ZORHostScriptRunner::GetWindow(const Sequence& sequence) const
{
    if (!sequence.window)
        throw ZORHostScriptError("no window chosen: use 'in' first");
    return sequence.window;
}

void ZORHostScriptRunner::Abort(int line, const QString& message)
{
    if (m_finished)
        return;
    m_report.Fail(line, message);
    m_aborted = true;
    // Out of all modal loops first: whoever opened them may still be on the stack.
    while (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        dialog->reject();
        if (dialog->isVisible())
            break;
    }
    QTimer::singleShot(0, this, &ZORHostScriptRunner::Finish);
}

void ZORHostScriptRunner::Finish()
{
    if (m_finished)
        return;
    m_finished = true;
    m_watchdog.stop();
    if (!m_aborted) {
        for (const ZORHostScriptStep& answer : m_answerer.GetQueue())
            m_report.Fail(answer.line, QStringLiteral("no dialog asked for this answer"));
    }
    m_report.PrintSummary();
    emit Finished(m_report.GetFailures().isEmpty());
}
