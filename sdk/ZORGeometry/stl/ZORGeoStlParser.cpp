#include "ZORGeoStlContent_p.h"
#include "ZORGeoStlNumber_p.h"
#include "ZORGeoStlParser_p.h"
#include "ZORGeoStlReport_p.h"

#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <utility>

namespace {

constexpr qsizetype kHeadSize = 1024;               // what shows the form
constexpr qsizetype kLookAhead = 1 << 20;           // longer than any sensible statement with its blanks
constexpr qint64 kLargestReserve = qint64(1) << 22; // facets; the size of a sparse file says little

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
    constexpr size_t kLongest = 200;
    const QByteArray bytes(text.data(), qsizetype(std::min(text.size(), kLongest)));
    const QString name = QString::fromUtf8(bytes);
    const bool isUtf8 = !name.contains(QChar::ReplacementCharacter);
    return (isUtf8 ? name : QString::fromLatin1(bytes)).simplified();
}

// Whether facets that include such a coordinate have an area in single precision: no length that is computed from
// it overflows, and it is not one of the subnormal numbers that small integers look like.
bool IsUsual(quint32 bits)
{
    constexpr quint32 kLargestExponent = (127 + 61) << 23; // squares of their differences stay below 2^128
    const quint32 exponent = bits & zor::geo::kExponentBits;
    return exponent <= kLargestExponent && (exponent != 0 || (bits << 1) == 0);
}

// Every second of the first bytes is zero and the others are not: 16-bit text.
bool IsUtf16(QByteArrayView content)
{
    if (content.startsWith("\xff\xfe") || content.startsWith("\xfe\xff"))
        return true;
    const qsizetype pairs = content.size() / 2;
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

} // namespace

ZORGeoStlParser::ZORGeoStlParser(double factor, ZORGeoStlReport& report, ZORGeoStlContent& content)
    : m_factor(factor)
    , m_report(report)
    , m_content(content)
    , m_builder(report)
{
}

std::vector<ZORGeoStlSolid> ZORGeoStlParser::Parse()
{
    switch (FindForm()) {
    case Form::Binary:
        ParseBinary();
        break;
    case Form::Ascii:
        ParseAscii();
        break;
    case Form::Utf16:
        Fail(ZORGeoStlLoader::tr("the STL content is UTF-16 text, which the format does not allow"));
    }
    if (m_solids.empty() && m_hasContent)
        Fail(ZORGeoStlLoader::tr("the STL content has no usable facet (%1)").arg(m_report.ToString()));
    return std::move(m_solids);
}

ZORGeoStlParser::Form ZORGeoStlParser::FindForm()
{
    const QByteArrayView fetched = m_content.Fetch(kHeadSize);
    const QByteArrayView head = fetched.first(std::min(fetched.size(), kHeadSize));
    if (head.size() < kHeaderSize)
        return IsUtf16(head) ? Form::Utf16 : Form::Ascii;
    const qint64 facets = qFromLittleEndian<quint32>(head.data() + 80);
    if (kHeaderSize + kFacetSize * facets == m_content.GetSize())
        return Form::Binary;
    if (IsUtf16(head))
        return Form::Utf16;
    const QByteArrayView body = head.sliced(80);
    const bool hasControls = std::any_of(body.begin(), body.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < ' ' && byte != '\t' && byte != '\r' && byte != '\n';
    });
    if (!hasControls)
        return Form::Ascii;
    if (kHeaderSize + kFacetSize * facets < m_content.GetSize())
        return Form::Binary;
    // A binary file that was cut short, or text with some stray control character.
    const QByteArray lower = body.toByteArray().toLower();
    return lower.contains("facet") || lower.contains("vertex") ? Form::Ascii : Form::Binary;
}

/// \param function  called with the bits of the nine coordinates of a facet
/// \return the number of facets, less than \a maximum for content that was shortened meanwhile
template<class Function>
qint64 ZORGeoStlParser::ForEachBinaryFacet(qint64 maximum, const Function& function)
{
    m_content.Rewind();
    m_content.Fetch(kHeaderSize);
    m_content.Skip(kHeaderSize);
    std::array<quint32, 9> corners;
    qint64 done = 0;
    while (done < maximum) {
        const QByteArrayView window = m_content.Fetch(kFacetSize);
        const qint64 count = std::min<qint64>(maximum - done, window.size() / kFacetSize);
        if (count == 0)
            break;
        for (qint64 i = 0; i < count; ++i) {
            qFromLittleEndian<quint32>(window.data() + kFacetSize * i + 12, 9, corners.data());
            function(corners);
        }
        m_content.Skip(kFacetSize * count);
        done += count;
    }
    return done;
}

void ZORGeoStlParser::ParseBinary()
{
    const qint64 announced = qFromLittleEndian<quint32>(m_content.Fetch(kHeaderSize).data() + 80);
    const qint64 bytes = m_content.GetSize() - kHeaderSize;
    // Writers that stream and never come back to the header leave a count of 0.
    const bool isCounted = announced > 0 || bytes % kFacetSize != 0;
    if (isCounted)
        RefuseForeignContent(announced, bytes / kFacetSize);
    const qint64 expected = isCounted ? std::min(announced, bytes / kFacetSize) : bytes / kFacetSize;

    m_builder.Reserve(std::min(expected, kLargestReserve));
    const qint64 facets = ForEachBinaryFacet(
        expected, [this](const std::array<quint32, 9>& corners) { m_builder.AddFacet(corners.data()); });
    m_report.d->missing = std::max(announced, expected) - facets;
    m_report.d->trailingBytes = m_report.d->missing > 0 ? 0 : bytes - kFacetSize * facets;
    m_hasContent = announced > 0 || facets > 0 || m_report.d->trailingBytes >= kFacetSize;
    EndSolid();
}

// Any file with control characters looks like binary STL. What gives the others away are a count that has nothing to
// do with their size, and facets that nobody could have measured. Each alone occurs in files that are worth reading:
// those that were cut short, and those of writers that divided by zero.
void ZORGeoStlParser::RefuseForeignContent(qint64 announced, qint64 present)
{
    constexpr qint64 kGross = 2;
    if (announced <= kGross * present && present <= kGross * announced)
        return;
    qint64 numUsual = 0;
    const qint64 facets =
        ForEachBinaryFacet(std::min(announced, present), [&numUsual](const std::array<quint32, 9>& corners) {
            numUsual += std::all_of(corners.begin(), corners.end(), IsUsual) ? 1 : 0;
        });
    if (numUsual * 2 >= facets)
        return;
    Fail(ZORGeoStlLoader::tr(
             "the STL content is another kind of file: its header announces %1 facets, its size allows %2, "
             "and %3 of them are not finite or out of range")
             .arg(QString::number(announced), QString::number(present), QString::number(facets - numUsual)));
}

// The window always holds what follows a statement, unless the content ends there. Only tokens and names that are
// longer than the look-ahead are cut, which are meaningless anyway.
void ZORGeoStlParser::ParseAscii()
{
    const QByteArrayView head = m_content.Fetch(kHeadSize);
    // Blanks alone are no content, but zeros are: a binary header, say.
    m_hasContent = head.first(std::min(head.size(), kHeadSize)).contains('\0');
    if (head.startsWith("\xef\xbb\xbf"))
        m_content.Skip(3);
    for (;;) {
        const QByteArrayView window = m_content.Fetch(kLookAhead + 1);
        if (window.isEmpty())
            break;
        const char* at = window.data();
        const char* const end = at + window.size();
        const char* const last = m_content.IsAtEnd() ? end : end - kLookAhead;
        while (at < last) {
            const std::string_view token = NextToken(at, end);
            if (!token.empty())
                ParseStatement(token, at, end);
        }
        m_content.Skip(at - window.data());
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
        ++m_report.d->facets;
        ++m_report.d->unreadable;
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
        ++m_report.d->facets;
        ++m_report.d->incomplete;
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
        ++m_report.d->emptySolids;
}
