#include "ZORExcFileKind.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>

#include <QByteArrayMatcher>
#include <QCoreApplication>
#include <QIODevice>
#include <QXmlStreamReader>

using ZORExcFileKind::Kind;

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORExcFileKind)
};

constexpr qint64 kHead = 256 << 10;            // bytes; a compressed block of the envelope is within them
constexpr qint64 kFarthest = qint64(16) << 20; // bytes that are searched for a word

/// What decides about a file whose word is farther away than it is searched for: its reader.
enum class Search { Found, Missing, Unknown };

Search Find(QIODevice& device, const QByteArray& word)
{
    const QByteArrayMatcher matcher(word);
    QByteArray window;
    for (qint64 done = 0; done < kFarthest;) {
        const QByteArray piece = device.read(kHead);
        if (piece.isEmpty())
            return Search::Missing;
        done += piece.size();
        window = window.right(word.size() - 1) + piece;
        if (matcher.indexIn(window) >= 0)
            return Search::Found;
    }
    return Search::Unknown;
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Returns the first byte that is neither a byte order mark nor blank; 0 where there is none.
char FindFirst(QByteArrayView head)
{
    if (head.startsWith("\xef\xbb\xbf"))
        head = head.sliced(3);
    for (const char c : head) {
        if (!IsBlank(c))
            return c;
    }
    return 0;
}

bool IsUtf16(QByteArrayView head)
{
    return head.startsWith("\xff\xfe") || head.startsWith("\xfe\xff")
           || head.startsWith(QByteArrayView("<\0", 2)) || head.startsWith(QByteArrayView("\0<", 2));
}

/// Returns the name of the outermost element; empty where it cannot be read.
QString FindRoot(const QByteArray& head)
{
    QXmlStreamReader reader;
    reader.addData(head);
    while (!reader.atEnd() && !reader.hasError()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            return reader.qualifiedName().toString();
    }
    return {};
}

QByteArray ToUtf16(const char* word, bool isBigEndian)
{
    QByteArray wide;
    for (; *word; ++word) {
        wide.append(isBigEndian ? '\0' : *word);
        wide.append(isBigEndian ? *word : '\0');
    }
    return wide;
}

Kind RecognizeXml(QIODevice& device, const QByteArray& head)
{
    constexpr char kContour[] = "<OuterContour";
    const QString root = FindRoot(head);
    if (root == QLatin1String("layups"))
        return Kind::LayupXml;
    const bool isBigEndian = head.startsWith('\xfe') || head.startsWith('\0');
    const Search search = Find(device, IsUtf16(head) ? ToUtf16(kContour, isBigEndian) : QByteArray(kContour));
    if (search == Search::Found)
        return Kind::Contours;
    return search == Search::Unknown && !root.isEmpty() ? Kind::Contours : Kind::Stl;
}

Kind RecognizeEnvelope(const QByteArray& head)
{
    constexpr qsizetype kEnough = 64; // bytes of the document, which begins with its format
    const QByteArray start = ZORSysDocumentEnvelope::GetDocumentStart(head, kEnough);
    return start.contains("ZORNest") ? Kind::Result : Kind::Container;
}

Kind RecognizeContent(QIODevice& device)
{
    const QByteArray head = device.peek(kHead);
    if (head.isEmpty())
        return Kind::Empty;
    if (ZORSysDocumentEnvelope::HasSignature(head))
        return RecognizeEnvelope(head);
    const char first = FindFirst(head);
    if (first == '<' || IsUtf16(head))
        return RecognizeXml(device, head);
    if (first == '{' || first == '[')
        return Find(device, "\"allComposite\"") == Search::Missing ? Kind::Stl : Kind::LayupJson;
    return Kind::Stl;
}

} // namespace

Kind ZORExcFileKind::Recognize(QIODevice& device)
{
    ZOR_TRACE_CALL(&device);
    const qint64 position = device.pos();
    const Kind kind = RecognizeContent(device);
    device.seek(position);
    return kind;
}

QString ZORExcFileKind::GetName(Kind kind)
{
    switch (kind) {
    case Kind::Empty:
        return Texts::tr("empty file");
    case Kind::Container:
        return Texts::tr("container file");
    case Kind::Result:
        return Texts::tr("nesting result file");
    case Kind::Contours:
        return Texts::tr("contour file");
    case Kind::LayupXml:
    case Kind::LayupJson:
        return Texts::tr("layup file");
    case Kind::Stl:
        break;
    }
    return Texts::tr("STL file");
}
