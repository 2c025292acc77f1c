#include "actions/ZORHostMnemonics.h"

#include <QAction>

QChar ZORHostMnemonics::Find(const QString& text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&')
            continue;
        ++i; // two of them are the character itself
        if (text[i] != u'&')
            return text[i].toUpper();
    }
    return {};
}

QString ZORHostMnemonics::Add(const QString& text, const QSet<QChar>& taken)
{
    if (!Find(text).isNull())
        return text;
    qsizetype place = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isLetterOrNumber() || taken.contains(text[i].toUpper()))
            continue;
        const bool startsWord = i == 0 || text[i - 1].isSpace();
        if (startsWord) {
            place = i;
            break;
        }
        if (place < 0)
            place = i;
    }
    return place < 0 ? text : text.left(place) + u'&' + text.mid(place);
}

void ZORHostMnemonics::Assign(QAction* action, const QList<QAction*>& others)
{
    QSet<QChar> taken;
    for (const QAction* other : others) {
        if (other != action)
            taken.insert(Find(other->text()));
    }
    action->setText(Add(action->text(), taken));
}
