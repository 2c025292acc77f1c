#include "ZORGeoStlNumber_p.h"
#include "ZORGeoStlParser_p.h"

#include <ZORSystem/ZORSysFileException.h>

#include <QCoreApplication>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <utility>

namespace {

constexpr qsizetype headerSize = 84; // with the number of facets in the last four bytes
constexpr qsizetype facetSize = 50;
constexpr qsizetype releaseStep = qsizetype(4) << 20;

void SkipToken(const char*& at, const char* end)
{
    while (at != end && !ZorGeoIsBlank(*at))
        ++at;
}

std::string_view NextToken(const char*& at, const char* end)
{
    ZorGeoSkipBlanks(at, end);
    const char* begin = at;
    SkipToken(at, end);
    return {begin, size_t(at - begin)};
}

// \param lower  in lower case
bool StartsWith(std::string_view token, std::string_view lower)
{
    return token.size() >= lower.size()
           && std::equal(lower.begin(), lower.end(), token.begin(), [](char wanted, char c) {
                  return wanted == (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
              });
}

bool Is(std::string_view token, std::string_view lower)
{
    return token.size() == lower.size() && StartsWith(token, lower);
}

// Whether what follows on the line of a solid's name is no name any more but its first statement; some
// files have a single line.
bool IsStatement(std::string_view token, const char* at, const char* end)
{
    if (StartsWith(token, "endsolid"))
        return true;
    const std::string_view next = NextToken(at, end);
    if (Is(token, "facet"))
        return Is(next, "normal");
    if (Is(token, "outer"))
        return Is(next, "loop");
    float number = 0;
    const char* begin = next.data();
    return Is(token, "vertex") && ZorGeoReadFloat(begin, begin + next.size(), number);
}

QString ToName(std::string_view text)
{
    constexpr size_t longest = 200;
    const QByteArray bytes(text.data(), qsizetype(std::min(text.size(), longest)));
    const QString name = QString::fromUtf8(bytes);
    const bool isUtf8 = !name.contains(QChar::ReplacementCharacter);
    return (isUtf8 ? name : QString::fromLatin1(bytes)).simplified();
}

// Every second of the first bytes is zero and the others are not: 16-bit text.
bool IsUtf16(QByteArrayView content)
{
    if (content.startsWith("\xff\xfe") || content.startsWith("\xfe\xff"))
        return true;
    const qsizetype pairs = std::min<qsizetype>(content.size(), 1024) / 2;
    if (pairs < 4)
        return false;
    qsizetype zeros[2] = {0, 0};
    for (qsizetype i = 0; i < 2 * pairs; ++i)
        zeros[i % 2] += content[i] == 0 ? 1 : 0;
    return (zeros[0] == 0 && zeros[1] == pairs) || (zeros[1] == 0 && zeros[0] == pairs);
}

[[noreturn]] void Fail(const QString& text)
{
    throw ZORSysFileException(text);
}

QString Translate(const char* text)
{
    return QCoreApplication::translate("ZORGeoStlLoader", text);
}

} // namespace

ZORGeoStlParser::ZORGeoStlParser(double factor, ZORGeoStlReport& report,
                                 std::function<void(qsizetype)> release)
    : m_factor(factor)
    , m_report(report)
    , m_release(std::move(release))
    , m_builder(report)
{
}

std::vector<ZORGeoStlSolid> ZORGeoStlParser::Parse(QByteArrayView content)
{
    switch (FindForm(content)) {
    case Form::Binary:
        ParseBinary(content);
        break;
    case Form::Ascii:
        ParseAscii(content);
        break;
    case Form::Utf16:
        Fail(Translate("the STL content is UTF-16 text, which the format does not allow"));
    }
    if (m_solids.empty() && m_hasContent)
        Fail(Translate("the STL content has no usable facet (%1)").arg(m_report.ToString()));
    return std::move(m_solids);
}

ZORGeoStlParser::Form ZORGeoStlParser::FindForm(QByteArrayView content)
{
    if (content.size() < headerSize)
        return IsUtf16(content) ? Form::Utf16 : Form::Ascii;
    const qint64 facets = qFromLittleEndian<quint32>(content.data() + 80);
    if (headerSize + facetSize * facets == content.size())
        return Form::Binary;
    if (IsUtf16(content))
        return Form::Utf16;
    const QByteArrayView body = content.sliced(80, std::min<qsizetype>(content.size(), 1024) - 80);
    const bool hasControls = std::any_of(body.begin(), body.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < ' ' && byte != '\t' && byte != '\r' && byte != '\n';
    });
    if (!hasControls)
        return Form::Ascii;
    if (headerSize + facetSize * facets < content.size())
        return Form::Binary;
    // A binary file that was cut short, or text with some stray control character.
    const QByteArray lower = body.toByteArray().toLower();
    return lower.contains("facet") || lower.contains("vertex") ? Form::Ascii : Form::Binary;
}

void ZORGeoStlParser::ParseBinary(QByteArrayView content)
{
    const qint64 announced = qFromLittleEndian<quint32>(content.data() + 80);
    const qint64 present = (content.size() - headerSize) / facetSize;
    // Writers that stream and never come back to the header leave a count of 0.
    const bool isCounted = announced > 0 || (content.size() - headerSize) % facetSize != 0;
    const qint64 facets = isCounted ? std::min(announced, present) : present;
    m_hasContent = announced > 0 || facets > 0;
    m_report.missing = std::max<qint64>(announced - facets, 0);
    m_report.trailingBytes = m_report.missing > 0 ? 0 : content.size() - headerSize - facetSize * facets;

    m_builder.Reserve(facets);
    std::array<quint32, 9> corners;
    qsizetype released = 0;
    for (qint64 i = 0; i < facets; ++i) {
        const char* facet = content.data() + headerSize + facetSize * i;
        qFromLittleEndian<quint32>(facet + 12, 9, corners.data());
        m_builder.AddFacet(corners.data());
        if (facet - content.data() - released > releaseStep) {
            released = facet - content.data();
            m_release(released);
        }
    }
    EndSolid();
}

void ZORGeoStlParser::ParseAscii(QByteArrayView content)
{
    const char* at = content.data();
    const char* const end = at + content.size();
    if (content.startsWith("\xef\xbb\xbf"))
        at += 3;
    // Blanks alone are no content, but zeros are: a binary header, say.
    m_hasContent = content.first(std::min<qsizetype>(content.size(), 1024)).contains('\0');
    const char* released = at;
    for (std::string_view token = NextToken(at, end); !token.empty(); token = NextToken(at, end)) {
        ParseStatement(token, at, end);
        if (at - released > releaseStep) {
            released = at;
            m_release(at - content.data());
        }
    }
    EndSolid();
}

void ZORGeoStlParser::ParseStatement(std::string_view keyword, const char*& at, const char* end)
{
    if (Is(keyword, "vertex")) {
        m_hasContent = true;
        ParseVertex(at, end);
    } else if (Is(keyword, "facet")) {
        m_hasContent = true;
        EndFacet();
        m_inFacet = true;
    } else if (Is(keyword, "endloop") || Is(keyword, "endfacet")) {
        EndFacet();
    } else if (Is(keyword, "solid")) {
        EndSolid();
        BeginSolid(at, end);
    } else if (StartsWith(keyword, "endsolid")) {
        EndSolid();
        BeginSolid(at, end); // the name comes again; what may follow it belongs to a solid without name
        m_inSolid = false;
        m_name.clear();
    } else {
        m_hasContent = true;
    }
}

void ZORGeoStlParser::ParseVertex(const char*& at, const char* end)
{
    for (size_t i = 0; i < 3; ++i) {
        float coordinate = 0;
        m_isReadable = ZorGeoReadFloat(at, end, coordinate) && m_isReadable;
        m_coordinates[size_t(3 * m_corners) + i] = std::bit_cast<quint32>(coordinate);
        if (!m_isReadable)
            break;
    }
    if (++m_corners < 3)
        return;
    if (m_isReadable) {
        m_builder.AddFacet(m_coordinates.data());
    } else {
        ++m_report.facets;
        ++m_report.unreadable;
    }
    m_corners = 0;
    m_isReadable = true;
    m_inFacet = false;
}

// Reads the name, which ends with the line or with a statement on it.
void ZORGeoStlParser::BeginSolid(const char*& at, const char* end)
{
    const char* const line = std::find_if(at, end, [](char c) { return c == '\n' || c == '\r'; });
    const char* const begin = at;
    const char* nameEnd = at;
    for (const char* next = at; at < line; at = next) {
        nameEnd = at;
        const std::string_view token = NextToken(next, end);
        if (token.empty() || token.data() >= line || IsStatement(token, next, end))
            break;
        nameEnd = next;
    }
    m_name = ToName({begin, size_t(nameEnd - begin)});
    m_inSolid = true;
}

void ZORGeoStlParser::EndFacet()
{
    if (m_corners > 0 || m_inFacet) {
        ++m_report.facets;
        ++m_report.incomplete;
    }
    m_corners = 0;
    m_isReadable = true;
    m_inFacet = false;
}

void ZORGeoStlParser::EndSolid()
{
    EndFacet();
    ZORGeoStlSolid solid = m_builder.Take(m_factor);
    solid.name = std::exchange(m_name, {});
    if (!solid.triangles.isEmpty())
        m_solids.push_back(std::move(solid));
    else if (m_inSolid)
        ++m_report.emptySolids;
}
