// Follows the markup of an XML document.

#pragma once

#include <ZORSystem/ZORSysXmlGuard.h>

#include <QHash>
#include <QString>
#include <QStringDecoder>

namespace ZORSysXmlGuard {

/// Characters of a document, or of the replacement text of an entity.
class Input
{
public:
    explicit Input(QIODevice& device)
        : m_device(&device)
    {
    }
    explicit Input(const QString& text)
        : m_text(text)
    {
    }

    /// Returns 0 at the end, and from a character 0 on.
    char16_t Next()
    {
        if (m_position == m_text.size() && !Fill())
            return 0;
        const char16_t character = m_text[m_position].unicode();
        m_position += character == 0 ? 0 : 1;
        return character;
    }
    /// Valid after Next() returned 0.
    bool IsAtEnd() const { return m_position == m_text.size(); }

private:
    bool Fill();

    QIODevice* m_device = nullptr; // null for an entity, not owned
    QStringDecoder m_decoder;
    QString m_text; // block of the document that is being scanned
    qsizetype m_position = 0;
};

/// Follows the markup as far as it is well-formed. The parser stops where it is not, so that it does not
/// matter how the rest is understood.
class Scanner
{
public:
    explicit Scanner(QIODevice& device);

    Finding Scan();

private:
    struct Entity
    {
        QString text; // null for an external entity
        bool isOpen = false;
    };
    /// Attributes that every element of a name has.
    struct Defaults
    {
        int count = 0;
        qint64 numCharacters = 0;
    };
    using Part = bool (Scanner::*)();
    using Entities = QHash<QString, Entity>;

    char16_t Next() { return m_input->Next(); }
    void SkipPast(QLatin1String end);
    QString ReadName(char16_t& next);
    QString ReadReplacement(char16_t quote);
    bool Fail(Verdict verdict);

    bool ScanContent();
    bool ScanMarkup();
    bool ScanTag(char16_t first);
    bool AddDefaults(const QString& element, int& numAttributes);
    bool ScanValue(char16_t quote);
    bool ScanReplacedValue() { return ScanValue(0); }
    bool ScanReference(Part part);

    bool ScanDoctype();
    bool ScanSubset();
    bool ScanDeclaration();
    void ScanEntity();
    bool ScanAttributes();
    bool Expand(Entities& entities, const QString& name, Part part);
    bool Charge(qint64 numCharacters);

    Input m_document;
    Input* m_input = &m_document; // the document, or the entity that is being scanned
    Entities m_entities, m_parameterEntities;
    QHash<QString, Defaults> m_defaults; // by name of the element
    int m_depth = 0;
    int m_numOpenEntities = 0;
    int m_numDeclaredAttributes = 0;
    qint64 m_numValueCharacters = 0; // of values of attributes, with what was expanded in them
    qint64 m_numExpanded = 0;
    const qint64 m_maximumExpansion;
    Verdict m_verdict = Verdict::Harmless;
};

inline bool IsQuote(char16_t character)
{
    return character == u'"' || character == u'\'';
}

inline bool IsSpace(char16_t character)
{
    return character == u' ' || (character >= u'\t' && character <= u'\r');
}

} // namespace ZORSysXmlGuard
