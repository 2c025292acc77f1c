#include "ZORSysXmlScanner_p.h"

#include <QIODevice>

#include <algorithm>
#include <limits>
#include <utility>

namespace ZORSysXmlGuard {

namespace {

constexpr int kBlockSize = 1 << 16;
constexpr qint64 kFreeExpansion = 1 << 20;
constexpr qint64 kExpansionPerByte = 4;

} // namespace

bool Input::Fill()
{
    do {
        const QByteArray bytes = m_device ? m_device->read(kBlockSize) : QByteArray();
        if (bytes.isEmpty())
            return false;
        if (!m_decoder.isValid()) {
            // Markup looks the same in all encodings that are not one of Unicode's.
            const auto encoding = QStringConverter::encodingForData(bytes, u'<');
            m_decoder = QStringDecoder(encoding.value_or(QStringConverter::Latin1));
        }
        m_text = m_decoder(bytes);
        m_position = 0;
    } while (m_text.isEmpty());
    return true;
}

Scanner::Scanner(QIODevice& device)
    : m_document(device)
    , m_maximumExpansion(std::min<qint64>(kFreeExpansion + kExpansionPerByte * device.size(),
                                          std::numeric_limits<int>::max()))
{
}

Finding Scanner::Scan()
{
    // A file of 8-bit markup may announce another encoding; what the parser makes of its bytes then has zeros here.
    if (ScanContent() && !m_document.IsAtEnd())
        Fail(Verdict::Malformed);
    return {m_verdict, int(std::min(m_numExpanded, m_maximumExpansion))};
}

bool Scanner::Fail(Verdict verdict)
{
    if (m_verdict == Verdict::Harmless)
        m_verdict = verdict;
    return false;
}

/// \param end  up to four characters
void Scanner::SkipPast(QLatin1String end)
{
    quint64 wanted = 0, mask = 0, window = 0;
    for (const char character : end) {
        wanted = (wanted << 16) | quint64(character);
        mask = (mask << 16) | 0xffff;
    }
    while (const char16_t character = Next()) {
        window = ((window << 16) | character) & mask;
        if (window == wanted)
            return;
    }
}

/// Reads a name, and white space in front of it.
/// \param next  the character that was read last; afterwards the one behind the name
QString Scanner::ReadName(char16_t& next)
{
    while (IsSpace(next))
        next = Next();
    QString name;
    for (; next && !IsSpace(next) && !IsQuote(next) && !QStringView(u"<>/;&%").contains(next); next = Next())
        name.append(next);
    return name;
}

bool Scanner::ScanContent()
{
    while (const char16_t character = Next()) {
        if (character == u'<' && !ScanMarkup())
            return false;
        if (character == u'&' && !ScanReference(&Scanner::ScanContent))
            return false;
    }
    return true;
}

// After "<".
bool Scanner::ScanMarkup()
{
    const char16_t first = Next();
    switch (first) {
    case u'?':
        SkipPast(QLatin1String("?>"));
        return true;
    case u'/':
        SkipPast(QLatin1String(">"));
        --m_depth;
        return true;
    case u'!':
        break;
    default:
        return ScanTag(first);
    }
    switch (Next()) {
    case u'-':
        Next();
        SkipPast(QLatin1String("-->"));
        return true;
    case u'[':
        SkipPast(QLatin1String("]]>"));
        return true;
    default:
        return ScanDoctype();
    }
}

bool Scanner::ScanTag(char16_t first)
{
    char16_t character = first;
    const QString element = ReadName(character);
    int numAttributes = 0;
    if (!m_defaults.isEmpty() && !AddDefaults(element, numAttributes))
        return false;
    char16_t last = 0;
    for (; character && character != u'>'; character = Next()) {
        if (IsQuote(character) && !ScanValue(character))
            return false;
        if (character == u'=' && ++numAttributes > kMaximumAttributes)
            return Fail(Verdict::TooManyAttributes);
        last = character;
    }
    if (m_depth >= kMaximumDepth)
        return Fail(Verdict::TooDeep);
    if (last != u'/')
        ++m_depth;
    return true;
}

bool Scanner::AddDefaults(const QString& element, int& numAttributes)
{
    const auto defaults = m_defaults.constFind(element);
    if (defaults == m_defaults.cend() || defaults->count == 0)
        return true;
    numAttributes += defaults->count;
    return Charge(defaults->numCharacters);
}

/// \param quote  ends the value; 0 for the replacement text of an entity in a value
bool Scanner::ScanValue(char16_t quote)
{
    while (const char16_t character = Next()) {
        if (character == quote)
            break;
        ++m_numValueCharacters;
        if (character == u'&' && !ScanReference(&Scanner::ScanReplacedValue))
            return false;
    }
    return true;
}

// After "&".
bool Scanner::ScanReference(Part part)
{
    char16_t end = Next();
    const QString name = ReadName(end);
    return end != u';' || Expand(m_entities, name, part);
}

/// Scans the replacement text of an entity in place of a reference to it.
bool Scanner::Expand(Entities& entities, const QString& name, Part part)
{
    const auto entity = entities.find(name);
    if (entity == entities.end() || entity->text.isNull())
        return true;
    if (entity->isOpen)
        return Fail(Verdict::Malformed);
    if (m_numOpenEntities >= kMaximumDepth)
        return Fail(Verdict::TooDeep);
    if (!Charge(entity->text.size()))
        return false;

    const int depth = m_depth;
    Input text(entity->text);
    Input* const outer = std::exchange(m_input, &text);
    entity->isOpen = true;
    ++m_numOpenEntities;
    const bool isHarmless = (this->*part)();
    --m_numOpenEntities;
    if (const auto open = entities.find(name); open != entities.end()) // its text may have declared others
        open->isOpen = false;
    m_input = outer;
    m_depth = depth; // the parser refuses text that ends in another element than it begins
    return isHarmless;
}

bool Scanner::Charge(qint64 numCharacters)
{
    m_numExpanded += numCharacters;
    return m_numExpanded <= m_maximumExpansion || Fail(Verdict::TooMuchExpansion);
}

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
