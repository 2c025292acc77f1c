#include "ZORNestDxfTags_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QStringDecoder>

#include <charconv>
#include <cmath>
#include <cstring>

namespace {

[[noreturn]] void Fail(qint64 line, const QString& what)
{
    throw ZORSysException(ZORNestDxfTags::tr("line %1: %2").arg(QString::number(line), what));
}

QByteArrayView Trim(QByteArrayView value)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!value.isEmpty() && isBlank(value.front()))
        value = value.sliced(1);
    while (!value.isEmpty() && isBlank(value.back()))
        value.chop(1);
    return value;
}

template<class Number>
bool Parse(QByteArrayView value, Number& number)
{
    value = Trim(value);
    if (!value.isEmpty() && value.front() == '+')
        value = value.sliced(1);
    const char* const end = value.data() + value.size();
    const auto [last, error] = std::from_chars(value.data(), end, number);
    return error == std::errc() && last == end;
}

} // namespace

QByteArrayView ZORNestDxfTags::ReadLine()
{
    ++m_position.line;
    const qsizetype begin = m_position.offset;
    const auto* found =
        static_cast<const char*>(std::memchr(m_bytes.data() + begin, '\n', size_t(m_bytes.size() - begin)));
    const qsizetype end = found ? found - m_bytes.data() : m_bytes.size();
    m_position.offset = std::min(end + 1, m_bytes.size());
    return m_bytes.sliced(begin, end - begin);
}

bool ZORNestDxfTags::Read(ZORNestDxfTag& tag)
{
    m_last = m_position;
    if (m_position.offset >= m_bytes.size())
        return false;
    const QByteArrayView code = ReadLine();
    if (!Parse(code, tag.code)) {
        // Blank lines at the very end are no pair.
        if (Trim(code).isEmpty() && m_position.offset >= m_bytes.size())
            return false;
        Fail(m_position.line, ZORNestDxfTags::tr("group code expected"));
    }
    if (m_position.offset >= m_bytes.size())
        Fail(m_position.line, ZORNestDxfTags::tr("value missing"));
    tag.value = ReadLine();
    if (tag.value.endsWith('\r'))
        tag.value.chop(1);
    tag.line = m_position.line;
    if (tag.code == 0)
        tag.value = Trim(tag.value);
    return true;
}

bool ZORNestDxfRecord::Read(ZORNestDxfTags& tags, const ZORNestDxfTag& type, ZORNestDxfTag& next)
{
    m_type = type;
    m_tags.clear();
    while (tags.Read(next)) {
        if (next.code == 0)
            return true;
        if (m_tags.size() == kMaximumTags)
            Fail(type.line, ZORNestDxfTags::tr("entity has too many values"));
        m_tags.push_back(next);
    }
    return false;
}

const ZORNestDxfTag* ZORNestDxfRecord::Find(int code) const
{
    for (const ZORNestDxfTag& tag : m_tags) {
        if (tag.code == code)
            return &tag;
    }
    return nullptr;
}

double ZORNestDxfRecord::ToNumber(const ZORNestDxfTag& tag)
{
    double number = 0;
    if (!Parse(tag.value, number) || !std::isfinite(number))
        Fail(tag.line, ZORNestDxfTags::tr("number expected"));
    return number;
}

int ZORNestDxfRecord::ToInteger(const ZORNestDxfTag& tag)
{
    int number = 0;
    if (!Parse(tag.value, number))
        Fail(tag.line, ZORNestDxfTags::tr("number expected"));
    return number;
}

double ZORNestDxfRecord::GetNumber(int code, double fallback) const
{
    const ZORNestDxfTag* const tag = Find(code);
    return tag ? ToNumber(*tag) : fallback;
}

int ZORNestDxfRecord::GetInteger(int code, int fallback) const
{
    const ZORNestDxfTag* const tag = Find(code);
    return tag ? ToInteger(*tag) : fallback;
}

QByteArrayView ZORNestDxfRecord::GetValue(int code) const
{
    const ZORNestDxfTag* const tag = Find(code);
    return tag ? Trim(tag->value) : QByteArrayView();
}

QString ZORNestDxfRecord::ToText(QByteArrayView value)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(value);
    if (utf8.hasError())
        text = QString::fromLatin1(value);
    QString plain;
    qsizetype done = 0;
    for (qsizetype at = text.indexOf(QLatin1String("\\U+")); at >= 0;
         at = text.indexOf(QLatin1String("\\U+"), at + 1)) {
        bool isNumber = false;
        const ushort code = QStringView(text).mid(at + 3, 4).toUShort(&isNumber, 16);
        if (isNumber && text.size() >= at + 7) {
            plain.append(QStringView(text).mid(done, at - done)).append(QChar(code));
            done = at + 7;
        }
    }
    return plain.append(QStringView(text).mid(done));
}
