#include "ZORNestXml_p.h"

#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>

namespace ZORNestXml {

namespace {

QString Tr(const char* text)
{
    return QCoreApplication::translate("ZORNestXml", text);
}

// The place behind the end of what begins at \a at; that of the bytes when it has none.
qsizetype FindBehind(QByteArrayView bytes, qsizetype at, QByteArrayView end)
{
    const qsizetype found = bytes.indexOf(end, at);
    return found < 0 ? bytes.size() : found + end.size();
}

// Behind the tag that begins at \a at.
qsizetype CheckTag(QByteArrayView bytes, qsizetype at)
{
    int attributes = 0;
    char quote = '\0';
    for (; at < bytes.size(); ++at) {
        const char character = bytes[at];
        if (quote != '\0') {
            if (character == quote)
                quote = '\0';
        } else if (character == '"' || character == '\'') {
            quote = character;
        } else if (character == '>') {
            return at + 1;
        } else if (character == '=' && ++attributes > MaximumAttributes) {
            throw ZORSysException(Tr("an XML element has more than %1 attributes").arg(MaximumAttributes));
        }
    }
    return at;
}

} // namespace

void CheckMarkup(QByteArrayView bytes)
{
    // Two bytes a character look the same once the zeros between them are gone.
    const QByteArray narrow = bytes.first(std::min<qsizetype>(bytes.size(), 256)).contains('\0')
                                  ? bytes.toByteArray().replace('\0', "")
                                  : QByteArray();
    if (!narrow.isEmpty())
        bytes = narrow;
    qsizetype at = 0;
    while ((at = bytes.indexOf('<', at)) >= 0) {
        const QByteArrayView rest = bytes.sliced(at);
        if (rest.startsWith("<!ENTITY"))
            throw ZORSysException(Tr("XML that declares entities cannot be read"));
        if (rest.startsWith("<!--"))
            at = FindBehind(bytes, at + 4, "-->");
        else if (rest.startsWith("<![CDATA["))
            at = FindBehind(bytes, at + 9, "]]>");
        else if (rest.startsWith("<?"))
            at = FindBehind(bytes, at + 2, "?>");
        else if (rest.startsWith("<!"))
            ++at; // what it declares begins with "<" again
        else
            at = CheckTag(bytes, at);
    }
}

void CheckError(const QXmlStreamReader& reader)
{
    if (reader.hasError())
        throw ZORSysException(Tr("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString()));
}

void CheckDepth(const QXmlStreamReader& reader, int depth)
{
    if (depth > MaximumDepth) {
        throw ZORSysException(
            Tr("line %1: elements nest more than %2 deep").arg(reader.lineNumber()).arg(MaximumDepth));
    }
}

} // namespace ZORNestXml
