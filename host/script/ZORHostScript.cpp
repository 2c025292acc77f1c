#include "script/ZORHostScript.h"

#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QDir>
#include <QHash>

#include <optional>

namespace {

constexpr int kMany = 1000;
constexpr qint64 kMaximumMegabytes = 16;

struct WordCount
{
    int minimum;
    int maximum;
};

/// Words after the verb.
const QHash<QString, WordCount>& Verbs()
{
    static const QHash<QString, WordCount> verbs = {
        {"section", {1, 1}},    {"print", {1, 1}},    {"note", {1, 1}},    {"timeout", {1, 1}},
        {"in", {1, 1}},         {"trigger", {1, 1}},  {"click", {1, 1}},   {"set", {2, 2}},
        {"select", {2, kMany}}, {"key", {1, 2}},      {"answer", {1, 3}},  {"end", {0, 0}},
        {"expect", {3, kMany}}, {"wait", {4, kMany}}, {"let", {2, kMany}}, {"close", {0, 0}},
        {"screenshot", {2, 2}}, {"repeat", {3, 3}},   {"edit", {4, 4}},
    };
    return verbs;
}

/// Words after "answer <kind>".
const QHash<QString, WordCount>& Answers()
{
    static const QHash<QString, WordCount> answers = {{"file", {1, 2}},  {"item", {0, 1}}, {"text", {1, 1}},
                                                      {"color", {1, 1}}, {"box", {1, 2}},  {"cancel", {0, 0}},
                                                      {"form", {1, 1}}};
    return answers;
}

void CheckCount(const QString& what, WordCount count, qsizetype words)
{
    if (words < count.minimum)
        throw ZORSysFileException(ZORHostScript::tr("too few words after '%1'").arg(what));
    if (words > count.maximum)
        throw ZORSysFileException(ZORHostScript::tr("too many words after '%1'").arg(what));
}

void Check(const ZORHostScriptStep& step)
{
    const auto verb = Verbs().constFind(step.verb);
    if (verb == Verbs().constEnd())
        throw ZORSysFileException(ZORHostScript::tr("unknown step '%1'").arg(step.verb));
    CheckCount(step.verb, *verb, step.arguments.size());
    if (step.verb == QLatin1String("answer")) {
        const QString& kind = step.arguments.constFirst();
        const auto answer = Answers().constFind(kind);
        if (answer == Answers().constEnd())
            throw ZORSysFileException(ZORHostScript::tr("unknown kind of answer '%1'").arg(kind));
        CheckCount("answer " + kind, *answer, step.arguments.size() - 1);
    }
}

bool OpensBlock(const ZORHostScriptStep& step)
{
    return step.verb == QLatin1String("repeat")
           || (step.verb == QLatin1String("answer") && step.arguments.constFirst() == QLatin1String("form"));
}

QString NameOf(const ZORHostScriptStep& block)
{
    return block.verb == QLatin1String("repeat") ? block.verb : QStringLiteral("answer form");
}

QChar Unescape(QChar c)
{
    switch (c.unicode()) {
    case 'n':
        return u'\n';
    case 't':
        return u'\t';
    default:
        return c;
    }
}

} // namespace

QStringList ZORHostScript::Split(const QString& line)
{
    QStringList words;
    std::optional<QString> word; // set while inside one; may be empty within quotes
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (quoted && c == u'\\' && i + 1 < line.size()) {
            *word += Unescape(line[++i]);
        } else if (c == u'"') {
            quoted = !quoted;
            word = word.value_or(QString());
        } else if (!quoted && c.isSpace()) {
            if (word)
                words.append(*word);
            word.reset();
        } else if (!quoted && !word && c == u'#') {
            break;
        } else {
            word = word.value_or(QString()) + c;
        }
    }
    if (quoted)
        throw ZORSysFileException(ZORHostScript::tr("a quote is not closed"));
    if (word)
        words.append(*word);
    return words;
}

ZORHostScript ZORHostScript::Load(const QString& fileName)
{
    ZORSysFile file(fileName);
    const QString name = QDir::toNativeSeparators(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(name, file.errorString());
    if (file.size() > kMaximumMegabytes << 20)
        throw ZORSysFileOpenException(name, tr("it is larger than %1 MB").arg(kMaximumMegabytes));
    const QString text = QString::fromUtf8(file.readAll());
    if (const QString error = file.GetReadError(); !error.isEmpty())
        throw ZORSysFileOpenException(name, error);
    return Parse(text, fileName);
}

ZORHostScript ZORHostScript::Parse(const QString& text, const QString& name)
{
    ZORHostScript script;
    script.m_name = name;
    // Blocks do not nest deeper than the dialogs of a program: a plain stack of lists.
    QList<ZORHostScriptStep> open;
    const QStringList lines = text.split(u'\n');
    int number = 0;
    try {
        for (const QString& line : lines) {
            ++number;
            QStringList words = Split(line);
            if (words.isEmpty())
                continue;
            ZORHostScriptStep step;
            step.line = number;
            step.verb = words.takeFirst();
            step.arguments = words;
            Check(step);
            if (step.verb == QLatin1String("end")) {
                if (open.isEmpty())
                    throw ZORSysFileException(tr("'end' without 'answer form' or 'repeat'"));
                step = open.takeLast();
            } else if (OpensBlock(step)) {
                open.append(step);
                continue;
            }
            (open.isEmpty() ? script.m_steps : open.last().block).append(step);
        }
        if (!open.isEmpty()) {
            number = open.constLast().line;
            throw ZORSysFileException(tr("this '%1' has no 'end'").arg(NameOf(open.constLast())));
        }
    } catch (const ZORSysFileException& exception) {
        throw ZORSysFileException(
            QStringLiteral("%1:%2: %3").arg(name, QString::number(number), exception.GetMessage()));
    }
    return script;
}
