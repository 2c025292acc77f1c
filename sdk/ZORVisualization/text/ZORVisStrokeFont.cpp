#include "ZORVisStrokeFont_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisVectorFont.h>

namespace {

constexpr char kOrigin = 'R';
// The baseline lies this far below the origin of the letters.
constexpr int kBaseline = 9;

bool IsLineBreak(char c)
{
    return c == '\n' || c == '\r';
}

/// Takes records from the data; every function throws where the data are damaged.
class RecordReader
{
public:
    explicit RecordReader(const QByteArray& data)
        : m_data(data)
    {
    }

    /// Skips what is between two records.
    bool AtEnd()
    {
        while (m_position < m_data.size() && IsLineBreak(m_data[m_position]))
            ++m_position;
        return m_position == m_data.size();
    }

    ZORVisStrokeGlyph Read(size_t index)
    {
        m_index = index;
        ReadNumber(5);
        const int numPairs = ReadNumber(3);
        if (numPairs < 1)
            Fail();
        const int left = ReadCoordinate();
        const int right = ReadCoordinate();
        if (right < left)
            Fail();

        ZORVisStrokeGlyph glyph;
        glyph.advance = right - left;
        bool isPenDown = false;
        for (int i = 1; i < numPairs; ++i) {
            const char x = ReadLetter();
            const char y = ReadLetter();
            if (x == ' ' && y == kOrigin) {
                isPenDown = false;
                continue;
            }
            if (!isPenDown)
                glyph.strokes.emplace_back();
            isPenDown = true;
            glyph.strokes.back().push_back(
                {qint16(ToCoordinate(x) - left), qint16(kBaseline - ToCoordinate(y))});
        }
        return glyph;
    }

private:
    [[noreturn]] void Fail() const
    {
        throw ZORSysException(ZORVisVectorFont::tr("vector font record %1 is damaged").arg(m_index));
    }

    /// A number that is right-aligned in \a width columns.
    int ReadNumber(int width)
    {
        int number = -1;
        for (int i = 0; i < width; ++i) {
            const char c = m_position < m_data.size() ? m_data[m_position++] : '\0';
            if (c >= '0' && c <= '9')
                number = 10 * std::max(number, 0) + (c - '0');
            else if (c != ' ' || number >= 0)
                Fail();
        }
        if (number < 0)
            Fail();
        return number;
    }

    char ReadLetter()
    {
        if (AtEnd())
            Fail();
        const char c = m_data[m_position++];
        if (c < ' ' || c > '~')
            Fail();
        return c;
    }

    static int ToCoordinate(char letter) { return letter - kOrigin; }
    int ReadCoordinate() { return ToCoordinate(ReadLetter()); }

    const QByteArray& m_data;
    qsizetype m_position = 0;
    size_t m_index = 0;
};

} // namespace

ZORVisStrokeFont::ZORVisStrokeFont(const QByteArray& data)
{
    RecordReader reader(data);
    while (!reader.AtEnd())
        m_glyphs.push_back(reader.Read(m_glyphs.size()));
}

const ZORVisStrokeGlyph* ZORVisStrokeFont::GetGlyph(char32_t character) const
{
    constexpr char32_t kFirst = U' ';
    return character >= kFirst && character - kFirst < m_glyphs.size() ? &m_glyphs[character - kFirst]
                                                                       : nullptr;
}
