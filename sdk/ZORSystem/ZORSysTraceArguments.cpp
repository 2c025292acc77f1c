#include "ZORSysTraceArguments.h"

#include <QMetaObject>
#include <QObject>

#include <array>
#include <charconv>
#include <cmath>

void ZorTraceAppend(QByteArray& out, double value)
{
    constexpr int kDigits = 17; // enough to get the same number back
    if (std::isnan(value)) {
        out += "nan";
        return;
    }
    std::array<char, 32> text = {};
    const auto result = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, kDigits);
    out.append(text.data(), result.ptr - text.data());
}

void ZorTraceAppend(QByteArray& out, const QString& value)
{
    ZorTraceAppend(out, QStringView(value));
}

void ZorTraceAppend(QByteArray& out, QStringView value)
{
    ZorTraceAppendEscaped(out, value.toUtf8(), '"');
}

void ZorTraceAppend(QByteArray& out, QLatin1String value)
{
    ZorTraceAppendEscaped(out, QString(value).toUtf8(), '"');
}

void ZorTraceAppend(QByteArray& out, const char* value)
{
    if (value)
        ZorTraceAppendEscaped(out, value, '"');
    else
        out += "null";
}

void ZorTraceAppend(QByteArray& out, const QByteArray& value)
{
    out += "bytes";
    ZorTraceAppendCount(out, value.size());
}

void ZorTraceAppend(QByteArray& out, const QObject* value)
{
    if (!value) {
        out += "null";
        return;
    }
    out += '<';
    ZorTraceAppendEscaped(out, value->objectName().toUtf8());
    out += '>';
}

void ZorTraceAppend(QByteArray& out, const QMetaObject* value)
{
    if (value)
        (out += '<').append(value->className()).append('>');
    else
        out += "null";
}

void ZorTraceAppendInteger(QByteArray& out, qint64 value)
{
    out += QByteArray::number(value);
}

void ZorTraceAppendUnsigned(QByteArray& out, quint64 value)
{
    out += QByteArray::number(value);
}

void ZorTraceAppendBool(QByteArray& out, bool value)
{
    out += value ? "true" : "false";
}

void ZorTraceAppendPointer(QByteArray& out, const void* value)
{
    out += value ? "<object>" : "null";
}

void ZorTraceAppendCount(QByteArray& out, qsizetype count)
{
    out += '[' + QByteArray::number(count) + ']';
}

void ZorTraceAppendEscaped(QByteArray& out, const QByteArray& text, char quote)
{
    if (quote)
        out += quote;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\n')
            out += "\\n";
        else if (c == '\r')
            out += "\\r";
        else if (c == '\t')
            out += "\\t";
        else if (code < 0x20 || code == 0x7f)
            out += '\\' + QByteArray::number(code, 8).rightJustified(3, '0');
        else if (quote && (c == quote || c == '\\'))
            (out += '\\') += c;
        else
            out += c;
    }
    if (quote)
        out += quote;
}
