#include "RandomUserAction.h"

#include <QFile>

namespace {

constexpr QChar kEscape = u'\\';

QString Escape(const QString& word)
{
    QString result;
    for (const QChar character : word) {
        if (character == kEscape || character.unicode() < 0x20 || character.isSurrogate())
            result += QStringLiteral("\\%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
        else
            result += character;
    }
    return result;
}

QString Unescape(const QString& word)
{
    QString result;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (word[i] != kEscape) {
            result += word[i];
            continue;
        }
        result += QChar(word.mid(i + 1, 4).toUShort(nullptr, 16));
        i += 4;
    }
    return result;
}

} // namespace

QString RandomUserAction::ToLine() const
{
    QStringList words{kind};
    for (const QString& argument : arguments)
        words.append(Escape(argument));
    return words.join(u'\t');
}

RandomUserAction RandomUserAction::FromLine(const QString& line)
{
    QStringList words = line.split(u'\t');
    RandomUserAction action;
    action.kind = words.takeFirst();
    for (const QString& word : std::as_const(words))
        action.arguments.append(Unescape(word));
    return action;
}

QList<RandomUserAction> ReadRandomUserActions(const QString& fileName)
{
    QList<RandomUserAction> actions;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return actions;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        if (!line.startsWith(u'#'))
            actions.append(RandomUserAction::FromLine(line));
    }
    return actions;
}

bool WriteRandomUserActions(const QString& fileName, const QList<RandomUserAction>& actions)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    for (const RandomUserAction& action : actions)
        file.write(action.ToLine().toUtf8() + '\n');
    return file.flush();
}
