#include "exchange/ZORTestXmlGuard.h"

#include <QIODevice>
#include <QStringDecoder>

namespace {

bool IsQuote(char16_t character)
{
    return character == u'"' || character == u'\'';
}

/// Follows the markup as far as it is well-formed. The parser stops where it is not, so that it does not
/// matter what is made of the rest.
class Scanner
{
public:
    explicit Scanner(QIODevice* device)
        : m_device(device)
    {
    }

    bool CheckDocument();

private:
    char16_t Next();
    bool Fill();
    void SkipPast(QLatin1String end);
    void SkipQuoted(char16_t quote);

    bool CheckMarkup();
    bool CheckTag(char16_t first);
    bool CheckDoctype();
    bool CheckDeclaration();

    QIODevice* m_device; // not owned
    QStringDecoder m_decoder;
    QString m_text; // the piece of the file that is looked at
    qsizetype m_position = 0;
    int m_depth = 0;
};

/// The next character; 0 at the end. (A character 0 in the file ends it for the parser, too.)
char16_t Scanner::Next()
{
    if (m_position == m_text.size() && !Fill())
        return 0;
    return m_text[m_position++].unicode();
}

bool Scanner::Fill()
{
    m_text.clear();
    m_position = 0;
    do {
        const QByteArray bytes = m_device->read(1 << 16);
        if (bytes.isEmpty())
            return false;
        if (!m_decoder.isValid()) {
            // Markup looks the same in all encodings that are not one of Unicode's.
            const auto encoding = QStringConverter::encodingForData(bytes, u'<');
            m_decoder = QStringDecoder(encoding.value_or(QStringConverter::Latin1));
        }
        m_text = m_decoder(bytes);
    } while (m_text.isEmpty());
    return true;
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

void Scanner::SkipQuoted(char16_t quote)
{
    while (const char16_t character = Next()) {
        if (character == quote)
            return;
    }
}

bool Scanner::CheckDocument()
{
    while (const char16_t character = Next()) {
        if (character == u'<' && !CheckMarkup())
            return false;
    }
    return true;
}

// After "<".
bool Scanner::CheckMarkup()
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
        return CheckTag(first);
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
        return CheckDoctype();
    }
}

bool Scanner::CheckTag(char16_t first)
{
    int numAttributes = 0;
    char16_t last = 0;
    for (char16_t character = first; character && character != u'>'; character = Next()) {
        if (IsQuote(character))
            SkipQuoted(character);
        else if (character == u'=' && ++numAttributes > ZORTestXmlGuard::MaximumAttributes)
            return false;
        last = character;
    }
    return last == u'/' || ++m_depth <= ZORTestXmlGuard::MaximumDepth;
}

// After "<!D".
bool Scanner::CheckDoctype()
{
    bool isInSubset = false;
    while (const char16_t character = Next()) {
        if (IsQuote(character))
            SkipQuoted(character);
        else if (character == u'[')
            isInSubset = true;
        else if (character == u']')
            isInSubset = false;
        else if (character == u'>' && !isInSubset)
            return true;
        else if (character == u'<' && !CheckDeclaration())
            return false;
    }
    return true;
}

// After "<" among the declarations of the document type.
bool Scanner::CheckDeclaration()
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
    case u'E':
        return Next() != u'N'; // ENTITY, not ELEMENT
    default:
        return true;
    }
}

} // namespace

bool ZORTestXmlGuard::IsHarmless(QIODevice* device)
{
    return Scanner(device).CheckDocument();
}
