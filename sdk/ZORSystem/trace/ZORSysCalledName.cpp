#include "ZORSysCalledName_p.h"

#include <cctype>

namespace {

bool IsIdentifier(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// Start of the word "operator" that names the function; -1 when it is none.
qsizetype FindOperator(QByteArrayView text)
{
    constexpr QByteArrayView kWord = "operator";
    for (qsizetype at = text.indexOf(kWord); at >= 0; at = text.indexOf(kWord, at + 1)) {
        const qsizetype behind = at + kWord.size();
        const bool starts = at == 0 || !IsIdentifier(text[at - 1]);
        const bool ends = behind < text.size() && !IsIdentifier(text[behind]);
        if (starts && ends)
            return at;
    }
    return -1;
}

// The parenthesis that opens the parameters: outside template arguments, right behind a name. Those of
// "decltype (auto)" and "void (* Function(int))(double)" have a blank or nothing in front.
qsizetype FindParameters(QByteArrayView text)
{
    int depth = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '<')
            ++depth;
        else if (text[i] == '>')
            --depth;
        else if (text[i] == '(' && depth == 0 && i > 0 && (IsIdentifier(text[i - 1]) || text[i - 1] == '>'))
            return i;
    }
    return text.size();
}

// Start of the qualified name that ends before `end`, with its template arguments.
qsizetype FindNameStart(QByteArrayView text, qsizetype end)
{
    int depth = 0;
    qsizetype begin = end;
    while (begin > 0) {
        const char c = text[begin - 1];
        if (c == '>')
            ++depth;
        else if (c == '<')
            --depth;
        else if (depth == 0 && !IsIdentifier(c) && c != ':' && c != '~')
            break;
        --begin;
    }
    return begin;
}

QByteArray WithoutTemplateArguments(QByteArrayView name)
{
    QByteArray result;
    int depth = 0;
    for (const char c : name) {
        if (c == '<')
            ++depth;
        else if (c == '>')
            --depth;
        else if (depth == 0)
            result += c;
    }
    while (result.startsWith(':')) // behind an unnamed namespace
        result.remove(0, 1);
    return result;
}

} // namespace

QByteArray ZorSysCalledName(QByteArrayView prettyFunction)
{
    const qsizetype operatorAt = FindOperator(prettyFunction);
    if (operatorAt < 0) {
        const qsizetype end = FindParameters(prettyFunction);
        const qsizetype begin = FindNameStart(prettyFunction, end);
        return WithoutTemplateArguments(prettyFunction.sliced(begin, end - begin));
    }
    constexpr qsizetype kCall = sizeof("operator()") - 1;
    const bool isCall = prettyFunction.sliced(operatorAt).startsWith("operator()");
    qsizetype end = prettyFunction.indexOf('(', isCall ? operatorAt + kCall : operatorAt);
    if (end < 0)
        end = prettyFunction.size();
    const qsizetype begin = FindNameStart(prettyFunction, operatorAt);
    return WithoutTemplateArguments(prettyFunction.sliced(begin, operatorAt - begin))
           + prettyFunction.sliced(operatorAt, end - operatorAt).toByteArray();
}
