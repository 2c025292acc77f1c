// Declarations of document types.

#include "ZORSysXmlScanner_p.h"

namespace ZORSysXmlGuard {

/// Reads the value of an entity up to its end and resolves the codes of characters in it.
QString Scanner::ReadReplacement(char16_t quote)
{
    QString text(QLatin1String(""));
    qsizetype begin = -1; // of the code of a character
    for (char16_t character = Next(); character && character != quote; character = Next()) {
        text.append(character);
        if (character == u'&')
            begin = text.size();
        if (character != u';' || begin < 0 || !QStringView(text).sliced(begin).startsWith(u'#'))
            continue;
        const QStringView code = QStringView(text).sliced(begin + 1).chopped(1);
        const bool isHexadecimal = code.startsWith(u'x');
        const char32_t resolved = code.sliced(isHexadecimal ? 1 : 0).toUInt(nullptr, isHexadecimal ? 16 : 10);
        text.truncate(begin - 1);
        if (resolved != 0)
            text.append(QString::fromUcs4(&resolved, 1));
        begin = -1;
    }
    return text;
}

// After "<!D".
bool Scanner::ScanDoctype()
{
    while (const char16_t character = Next()) {
        if (IsQuote(character))
            SkipPast(character == u'"' ? QLatin1String("\"") : QLatin1String("'"));
        else if (character == u'[' && !ScanSubset())
            return false;
        else if (character == u'>')
            return true;
    }
    return true;
}

/// Scans the declarations of a document type up to the bracket that ends them, or those of a parameter entity.
bool Scanner::ScanSubset()
{
    while (const char16_t character = Next()) {
        if (character == u']') {
            // The parser lets an entity end the document type and goes on with the content of the document.
            return m_numOpenEntities == 0 || Fail(Verdict::Malformed);
        } else if (character == u'%') {
            char16_t end = Next();
            const QString name = ReadName(end);
            if (end == u';' && !Expand(m_parameterEntities, name, &Scanner::ScanSubset))
                return false;
        } else if (character == u'<' && !ScanDeclaration()) {
            return false;
        }
    }
    return true;
}

// After "<" among the declarations of the document type.
bool Scanner::ScanDeclaration()
{
    if (Next() == u'?') {
        SkipPast(QLatin1String("?>"));
        return true;
    }
    switch (Next()) {
    case u'-':
        Next();
        SkipPast(QLatin1String("-->"));
        return true;
    case u'A':
        return ScanAttributes();
    case u'E':
        if (Next() == u'N') {
            ScanEntity();
            return true;
        }
        break;
    default:
        break;
    }
    for (char16_t character = Next(); character && character != u'>'; character = Next()) {
        if (IsQuote(character))
            SkipPast(character == u'"' ? QLatin1String("\"") : QLatin1String("'"));
    }
    return true;
}

// After "<!EN". The first declaration of a name counts.
void Scanner::ScanEntity()
{
    char16_t next = Next();
    ReadName(next); // the rest of "ENTITY"
    QString name = ReadName(next);
    const bool isParameter = name.isEmpty() && next == u'%';
    if (isParameter) {
        next = Next();
        name = ReadName(next);
    }
    Entity entity;
    while (IsSpace(next))
        next = Next();
    for (bool isFirst = true; next && next != u'>'; next = Next(), isFirst = false) {
        if (!IsQuote(next))
            continue;
        const QString text = ReadReplacement(next);
        if (isFirst) // behind a keyword, quotes enclose the address of an external entity
            entity.text = text;
    }
    Entities& entities = isParameter ? m_parameterEntities : m_entities;
    if (!entities.contains(name))
        entities.insert(name, entity);
}

// After "<!A".
bool Scanner::ScanAttributes()
{
    char16_t next = Next();
    ReadName(next); // the rest of "ATTLIST"
    Defaults& defaults = m_defaults[ReadName(next)];
    m_numValueCharacters = 0;
    for (; next && next != u'>'; next = Next()) {
        ++defaults.numCharacters;
        if (IsQuote(next)) {
            ++defaults.count;
            ++m_numDeclaredAttributes;
            if (!ScanValue(next))
                return false;
        } else if (next == u'#') {
            // A keyword stands for a value, except for #FIXED, which has one.
            next = Next();
            m_numDeclaredAttributes += next == u'F' ? 0 : 1;
        }
        if (m_numDeclaredAttributes > kMaximumAttributes)
            return Fail(Verdict::TooManyAttributes);
    }
    defaults.numCharacters += m_numValueCharacters;
    return true;
}

} // namespace ZORSysXmlGuard
