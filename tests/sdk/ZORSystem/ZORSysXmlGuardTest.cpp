#include "support/Printers.h"

#include <ZORSystem/ZORSysXmlGuard.h>

#include <QStringEncoder>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

using ZORSysXmlGuard::Finding;
using ZORSysXmlGuard::Verdict;

Verdict Judge(const QByteArray& document)
{
    return ZORSysXmlGuard::Scan(document).verdict;
}

/// A document whose document type has these declarations.
QByteArray Document(const QByteArray& declarations, const QByteArray& content)
{
    return "<!DOCTYPE a [" + declarations + "]><a>" + content + "</a>";
}

QByteArray Nest(int depth, const QByteArray& inner = {})
{
    return QByteArray("<g>").repeated(depth) + inner + QByteArray("</g>").repeated(depth);
}

QByteArray Attributes(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += " n" + QByteArray::number(i) + "='='";
    return text;
}

/// Entities e0, e1 ... \a last, each \a count times the one before.
QByteArray Doubling(const QByteArray& first, int last, int count)
{
    QByteArray declarations = "<!ENTITY e0 '" + first + "'>";
    for (int i = 1; i <= last; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        declarations += "<!ENTITY e" + QByteArray::number(i) + " '" + inner.repeated(count) + "'>";
    }
    return declarations;
}

/// What a parser makes of a document.
struct Reading
{
    explicit Reading(const QByteArray& document, int limit)
    {
        QXmlStreamReader reader(document);
        reader.setNamespaceProcessing(false);
        reader.setEntityExpansionLimit(limit);
        int depth = 0;
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isStartElement()) {
                maximumDepth = std::max(maximumDepth, ++depth);
                const QXmlStreamAttributes attributes = reader.attributes();
                for (const QXmlStreamAttribute& attribute : attributes)
                    numCharacters += attribute.value().size();
            } else if (reader.isEndElement()) {
                --depth;
            } else if (reader.isCharacters()) {
                numCharacters += reader.text().size();
            }
        }
        isWellFormed = !reader.hasError();
    }

    bool isWellFormed = false;
    int maximumDepth = 0;
    qint64 numCharacters = 0;
};

TEST(ZORSysXmlGuardTest, DepthIsBoundedExactly)
{
    EXPECT_EQ(Verdict::Harmless, Judge(Nest(4000)));
    EXPECT_EQ(Verdict::TooDeep, Judge(Nest(4001)));
    EXPECT_EQ(Verdict::Harmless, Judge(Nest(3999, "<e/><e></e><e/>")));
    EXPECT_EQ(Verdict::TooDeep, Judge(Nest(4000, "<e/>")));
    EXPECT_EQ(Verdict::TooDeep, Judge(Nest(1000000)));
    EXPECT_EQ(Verdict::Harmless, Judge("<a>" + Nest(3999).repeated(3) + "</a>"));
}

TEST(ZORSysXmlGuardTest, AttributesOfAnElementAreBoundedExactly)
{
    EXPECT_EQ(Verdict::Harmless, Judge("<a" + Attributes(4000) + "><b" + Attributes(4000) + "/></a>"));
    EXPECT_EQ(Verdict::TooManyAttributes, Judge("<a" + Attributes(4001) + "/>"));
    EXPECT_EQ(Verdict::TooManyAttributes, Judge("<a" + Attributes(1000000) + "/>"));
}

TEST(ZORSysXmlGuardTest, MarkupInValuesCommentsAndSectionsIsText)
{
    const QByteArray deep = QByteArray("<g>").repeated(5000);
    for (const QByteArray& content :
         {"<!--" + deep + "-->", "<![CDATA[" + deep + "]]>", "<?pi " + deep + "?>", "<b c='" + deep + "'/>"})
        EXPECT_EQ(Verdict::Harmless, Judge("<a>" + content + "</a>")) << content.left(20).toStdString();
    EXPECT_EQ(Verdict::Harmless, Judge("<!-- <!DOCTYPE a [<!ENTITY e '&e;'>]> --><a>&e;</a>"));
}

TEST(ZORSysXmlGuardTest, CharactersThatEntitiesAddAreCounted)
{
    const auto count = [](const QByteArray& declarations, const QByteArray& content) {
        const Finding finding = ZORSysXmlGuard::Scan(Document(declarations, content));
        EXPECT_EQ(Verdict::Harmless, finding.verdict) << declarations.toStdString();
        return finding.numExpanded;
    };
    EXPECT_EQ(0, count("", "&lt;&#65;&unknown;"));
    EXPECT_EQ(0, count("<!ENTITY e 'text'>", "none"));
    EXPECT_EQ(1, count("<!ENTITY deg \"&#176;\">", "45&deg;"));
    EXPECT_EQ(2, count("<!ENTITY e '&#x1F600;'>", "&e;")) << "two code units";
    EXPECT_EQ(8, count("<!ENTITY e 'text'>", "&e;<b c='&e;'/>"));
    EXPECT_EQ(0, count("<!ENTITY e 'text'>", "<!-- &e; --><![CDATA[&e;]]><?pi &e;?>"));
    EXPECT_EQ(10, count("<!ENTITY f '&e;&e;'><!ENTITY e 'ab'>", "<b>&f;</b>")) << "6 and twice 2";
    EXPECT_EQ(5, count("<!ENTITY e 'first'><!ENTITY e 'the second'>", "&e;"));
    EXPECT_EQ(0, count("<!ENTITY e SYSTEM 'file'><!ENTITY e 'internal'>", "&e;"));
    EXPECT_EQ(0, count("<!ENTITY e PUBLIC 'name' 'file'>", "&e;"));
    EXPECT_EQ(14, count("<!ENTITY % p '<!ENTITY e \"\">'>%p;", "&e;"));
    EXPECT_EQ(1,
              count("<?pi ]> '?><!-- ]> ' --><!ELEMENT a ANY><!NOTATION n SYSTEM ']>'><!ENTITY\n e\t\">\"\n>",
                    "&e;"));
}

TEST(ZORSysXmlGuardTest, EntitiesThatExpandTooFarAreFoundAtOnce)
{
    EXPECT_EQ(Verdict::TooMuchExpansion, Judge(Document(Doubling("lol", 20, 10), "&e20;")));
    EXPECT_EQ(Verdict::TooMuchExpansion, Judge(Document(Doubling("lol", 20, 10), "<b c='&e20;'/>")));
    EXPECT_EQ(Verdict::Harmless, Judge(Document(Doubling("lol", 20, 10), "unused")));
    EXPECT_EQ(Verdict::TooMuchExpansion,
              Judge(Document(Doubling("lol", 20, 10) + "<!ATTLIST a b CDATA '&e20;'>", "")));
    const QByteArray kilobyte(1000, 'x');
    EXPECT_EQ(Verdict::TooMuchExpansion,
              Judge(Document("<!ENTITY e '" + kilobyte + "'>", QByteArray("&e;").repeated(100000))));
    EXPECT_EQ(Verdict::Harmless,
              Judge(Document("<!ENTITY e '" + kilobyte + "'>", QByteArray("&e;").repeated(1000))));

    QByteArray parameters = "<!ENTITY % p0 ' '>";
    for (int i = 1; i < 40; ++i) {
        const QByteArray inner = "&#37;p" + QByteArray::number(i - 1) + ';';
        parameters += "<!ENTITY % p" + QByteArray::number(i) + " '" + inner + inner + "'>";
    }
    EXPECT_EQ(Verdict::TooMuchExpansion, Judge(Document(parameters + "%p39;", "")));
}

TEST(ZORSysXmlGuardTest, LargerDocumentsMayExpandFurther)
{
    const QByteArray text(100, 'x');
    const QByteArray use = QByteArray("&e;").repeated(20000); // 2 MB
    EXPECT_EQ(Verdict::TooMuchExpansion, Judge(Document("<!ENTITY e '" + text + "'>", use)));
    EXPECT_EQ(Verdict::Harmless,
              Judge(Document("<!ENTITY e '" + text + "'>", use + QByteArray(400000, ' '))));
}

TEST(ZORSysXmlGuardTest, DepthAndAttributesCountInEntitiesToo)
{
    EXPECT_EQ(Verdict::Harmless, Judge(Document("<!ENTITY e '" + Nest(3999) + "'>", "&e;&e;")));
    EXPECT_EQ(Verdict::TooDeep, Judge(Document("<!ENTITY e '" + Nest(4000) + "'>", "&e;")));
    const QByteArray nested = "<!ENTITY e '" + Nest(2000) + "'><!ENTITY f '" + Nest(2000, "&e;") + "'>";
    EXPECT_EQ(Verdict::TooDeep, Judge(Document(nested, "&f;")));
    QByteArray hidden = Nest(4000);
    EXPECT_EQ(Verdict::TooDeep, Judge(Document("<!ENTITY e '" + hidden.replace('<', "&#60;") + "'>", "&e;")));
    EXPECT_EQ(Verdict::TooManyAttributes,
              Judge(Document("<!ENTITY e \"<b" + Attributes(4001) + "/>\">", "&e;")));
    QByteArray coded = "<b" + Attributes(4001) + "/>";
    coded.replace('=', "&#x3D;");
    EXPECT_EQ(Verdict::TooManyAttributes, Judge(Document("<!ENTITY e \"" + coded + "\">", "&e;")));
}

TEST(ZORSysXmlGuardTest, ChainsOfEntitiesAreBoundedExactly)
{
    EXPECT_EQ(Verdict::Harmless, Judge(Document(Doubling("x", 3999, 1), "&e3999;")));
    EXPECT_EQ(Verdict::TooDeep, Judge(Document(Doubling("x", 4000, 1), "&e4000;")));
    EXPECT_EQ(Verdict::TooDeep, Judge(Document(Doubling("x", 20000, 1), "&e20000;")));
}

TEST(ZORSysXmlGuardTest, DeclaredAttributesAreBounded)
{
    QByteArray implied;
    for (int i = 0; i < 4000; ++i)
        implied += " n" + QByteArray::number(i) + " CDATA #IMPLIED";
    EXPECT_EQ(Verdict::Harmless, Judge(Document("<!ATTLIST a" + implied + ">", "")));
    EXPECT_EQ(Verdict::TooManyAttributes,
              Judge(Document("<!ATTLIST a" + implied + "><!ATTLIST b c CDATA #REQUIRED>", "")));
    QByteArray fixed;
    for (int i = 0; i < 2001; ++i)
        fixed += " n" + QByteArray::number(i) + " (u|v) #FIXED 'u'";
    EXPECT_EQ(Verdict::Harmless, Judge(Document("<!ATTLIST a" + fixed + ">", "")));
    EXPECT_EQ(Verdict::TooManyAttributes,
              Judge("<!DOCTYPE a [<!ATTLIST a" + fixed + ">]><a" + Attributes(2000) + "/>"));
    EXPECT_EQ(Verdict::Harmless,
              Judge("<!DOCTYPE a [<!ATTLIST a" + fixed + ">]><a" + Attributes(1999) + "/>"));
}

TEST(ZORSysXmlGuardTest, DefaultsOfAttributesAreExpansions)
{
    const QByteArray declaration = "<!ATTLIST b c CDATA '" + QByteArray(1000, 'x') + "'>";
    EXPECT_EQ(Verdict::TooMuchExpansion, Judge(Document(declaration, QByteArray("<b/>").repeated(2000))));
    EXPECT_EQ(Verdict::Harmless, Judge(Document(declaration, QByteArray("<c/>").repeated(2000))));
    EXPECT_EQ(Verdict::TooMuchExpansion,
              Judge(Document(declaration + "<!ENTITY e '<b/><b/>'>", QByteArray("&e;").repeated(1000))));
}

TEST(ZORSysXmlGuardTest, WhatTheParserMayMisunderstandIsMalformed)
{
    EXPECT_EQ(Verdict::Malformed, Judge(Document("<!ENTITY e '&f;'><!ENTITY f '&e;'>", "&e;")));
    EXPECT_EQ(Verdict::Malformed, Judge(Document("<!ENTITY % p '&#37;p;'>%p;", "")));
    EXPECT_EQ(Verdict::Malformed, Judge("<!DOCTYPE a [<!ENTITY % p ']>&#60;a>'> %p;" + Nest(5000) + "</a>"));
    EXPECT_EQ(Verdict::Malformed, Judge("<a>" + QByteArray(1, '\0') + "</a>"));
}

TEST(ZORSysXmlGuardTest, MarkupInAnotherEncodingThanTheFirstOneIsMalformed)
{
    // The parser changes to the encoding that it reads about and finds the rest of the file in it.
    QByteArray document = "<?xml version='1.0' encoding='UTF-16LE'?>";
    QStringEncoder encoder(QStringConverter::Utf16LE);
    document += QByteArray(encoder(QString(200, u' ') + QString::fromLatin1(Nest(5000))));
    if (document.size() % 2 != 0)
        document.insert(document.indexOf('?') + 4, ' ');
    const Reading reading(document, 0);
    EXPECT_EQ(5000, reading.maximumDepth);
    EXPECT_EQ(Verdict::Malformed, Judge(document));
}

TEST(ZORSysXmlGuardTest, AllEncodingsAreScanned)
{
    const QString document = QString::fromLatin1(Document("<!ENTITY e 'four'>", "&e;"));
    for (const auto encoding : {QStringConverter::Utf8, QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                QStringConverter::Utf32LE, QStringConverter::Utf32BE}) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        const Finding finding = ZORSysXmlGuard::Scan(QByteArray(encoder(document)));
        EXPECT_EQ(Verdict::Harmless, finding.verdict) << encoding;
        EXPECT_EQ(4, finding.numExpanded) << encoding;
    }
}

TEST(ZORSysXmlGuardTest, ReasonsNameTheBounds)
{
    EXPECT_EQ("", ZORSysXmlGuard::GetReason(Verdict::Harmless));
    EXPECT_EQ("XML elements nest more than 4000 deep", ZORSysXmlGuard::GetReason(Verdict::TooDeep));
    EXPECT_EQ("an XML element has more than 4000 attributes",
              ZORSysXmlGuard::GetReason(Verdict::TooManyAttributes));
    EXPECT_EQ("the entities of the XML expand too far", ZORSysXmlGuard::GetReason(Verdict::TooMuchExpansion));
    EXPECT_EQ("XML is not well-formed", ZORSysXmlGuard::GetReason(Verdict::Malformed));
}

TEST(ZORSysXmlGuardTest, ParsersFindNoMoreThanTheGuardInRandomDocuments)
{
    std::mt19937 random(20);
    const auto below = [&random](size_t bound) { return size_t(random() % bound); };
    const QByteArray pieces[] = {
        "&e;",  "&f;",  "<b n='&f;'>q</b>", "<a/>",        "&#60;b/>", "<b><b><a q='7'/></b></b>",
        "text", "</a>", "&#38;e;",          "<!-- &e; -->"};
    const auto content = [&] {
        QByteArray text;
        for (size_t count = below(4); count > 0; --count)
            text += pieces[below(std::size(pieces))];
        return text;
    };
    const auto declare = [&]() -> QByteArray {
        switch (below(6)) {
        case 0:
            return "<!ENTITY e \"" + content() + "\">";
        case 1:
            return "<!ENTITY f \"" + content() + "\">";
        case 2:
            return "<!ENTITY % p \"<!ENTITY e '" + content().replace('\'', "") + "'>\">";
        case 3:
            return "%p;";
        case 4:
            return "<!ATTLIST a n CDATA 'v&f;' k CDATA 'z'>";
        default:
            return "<!ENTITY e SYSTEM 'x'>";
        }
    };
    const QByteArray damage[] = {"<", ">",  "'",    "\"",    "&",   ";",        "%",
                                 "]", "]>", "<!--", "&#39;", "<a>", "<![CDATA["};
    int numWellFormed = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray declarations;
        for (size_t count = below(5); count > 0; --count)
            declarations += declare();
        QByteArray document = Document(declarations, content() + "<b>" + content() + "</b>");
        for (size_t edits = below(2) * below(3); edits > 0; --edits) {
            const auto position = qsizetype(below(size_t(document.size())));
            if (below(2) == 0)
                document.remove(position, qsizetype(below(6)));
            else
                document.insert(position, damage[below(std::size(damage))]);
        }
        const Finding finding = ZORSysXmlGuard::Scan(document);
        if (finding.verdict != Verdict::Harmless)
            continue;
        const Reading reading(document, std::numeric_limits<int>::max());
        ASSERT_LE(reading.numCharacters, document.size() + finding.numExpanded) << document.toStdString();
        ASSERT_EQ(reading.isWellFormed, Reading(document, finding.numExpanded).isWellFormed)
            << document.toStdString();
        numWellFormed += reading.isWellFormed ? 1 : 0;
    }
    EXPECT_GT(numWellFormed, 2000);
}

} // namespace
