#include "ZORSysApiTrace.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFile>
#include <QMutex>

#include <cctype>
#include <chrono>
#include <cmath>
#include <exception>

class ZORSysApiTrace::Private
{
public:
    QMutex mutex;
    QFile file;
    bool wanted = false;
};

bool ZORSysApiTrace::s_enabled = false;

namespace {

thread_local int depth = 0;

qint64 Now()
{
    return std::chrono::steady_clock::now().time_since_epoch().count();
}

// "Result<T> Class::Method(Argument) const" -> "Class::Method("
QByteArray CalledName(const char* prettyFunction)
{
    const QByteArrayView text(prettyFunction);
    const qsizetype end = text.indexOf('(');
    qsizetype begin = end;
    while (begin > 0
           && (std::isalnum(static_cast<unsigned char>(text[begin - 1])) || text[begin - 1] == '_'
               || text[begin - 1] == ':' || text[begin - 1] == '~'))
        --begin;
    return text.sliced(begin, end - begin).toByteArray() + '(';
}

void AppendEscaped(QByteArray& out, const QByteArray& text)
{
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
                out += '\\' + QByteArray::number(static_cast<unsigned char>(c), 8).rightJustified(3, '0');
            else
                out += c;
        }
    }
    out += '"';
}

// Reads ZOR_API_TRACE before the first call of the process.
[[gnu::used]] const bool initialised = [] {
    if (const QString file = qEnvironmentVariable("ZOR_API_TRACE"); !file.isEmpty())
        ZORSysApiTrace::GetInstance()->SetFile(file);
    return true;
}();

} // namespace

ZORSysApiTrace* ZORSysApiTrace::GetInstance()
{
    static ZORSysApiTrace trace;
    return &trace;
}

ZORSysApiTrace::ZORSysApiTrace()
    : d(new Private)
{
}

ZORSysApiTrace::~ZORSysApiTrace()
{
    s_enabled = false;
    delete d;
}

void ZORSysApiTrace::SetEnabled(bool enabled)
{
    d->wanted = enabled;
    UpdateEnabled();
}

void ZORSysApiTrace::SetFile(const QString& fileName)
{
    {
        const QMutexLocker lock(&d->mutex);
        d->file.close();
        if (!fileName.isEmpty()) {
            d->file.setFileName(fileName);
            if (!d->file.open(QIODevice::WriteOnly | QIODevice::Truncate))
                throw ZORSysFileOpenException(fileName, d->file.errorString());
        }
    }
    UpdateEnabled();
}

void ZORSysApiTrace::UpdateEnabled()
{
    s_enabled = d->wanted || d->file.isOpen();
}

void ZORSysApiTrace::Record(const QByteArray& line, qint64 nanoseconds)
{
    {
        const QMutexLocker lock(&d->mutex);
        if (d->file.isOpen()) {
            d->file.write(line + '\n');
            d->file.flush();
        }
    }
    emit CallTraced(line, nanoseconds);
}

void ZorTraceAppend(QByteArray& out, double value)
{
    if (std::isnan(value))
        out += "nan";
    else if (std::isinf(value))
        out += value < 0 ? "-inf" : "inf";
    else
        out += QByteArray::number(value, 'g', 17);
}

void ZorTraceAppend(QByteArray& out, const QString& value)
{
    AppendEscaped(out, value.toUtf8());
}

void ZorTraceAppend(QByteArray& out, const char* value)
{
    if (value)
        AppendEscaped(out, value);
    else
        out += "null";
}

void ZorTraceAppend(QByteArray& out, const QByteArray& value)
{
    out += "bytes[" + QByteArray::number(value.size()) + ']';
}

void ZorTraceAppend(QByteArray& out, const QObject* value)
{
    if (value)
        out += '<' + value->objectName().toUtf8() + '>';
    else
        out += "null";
}

void ZorTraceAppend(QByteArray& out, const QMetaObject* value)
{
    if (value)
        out += '<' + QByteArray(value->className()) + '>';
    else
        out += "null";
}

void ZorTraceAppendInteger(QByteArray& out, qint64 value)
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

bool ZORSysApiTraceCall::Enter(const char* function)
{
    m_entered = true;
    m_outermost = depth++ == 0;
    if (!m_outermost)
        return false;
    m_exceptions = std::uncaught_exceptions();
    m_line = CalledName(function);
    m_start = Now();
    return true;
}

void ZORSysApiTraceCall::Leave()
{
    --depth;
    if (!m_outermost)
        return;
    const qint64 elapsed = Now() - m_start;
    if (std::uncaught_exceptions() > m_exceptions)
        m_line += " ! " + ZORSysException::GetLastMessage().toUtf8();
    ZORSysApiTrace::GetInstance()->Record(m_line, elapsed);
}
