#include "ZORVisStrokeFont_p.h"
#include "ZORVisVectorTextLayout_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Text = ZORVisVectorText;

// In text sizes.
constexpr double kDescent = 1.0 / 3;
constexpr double kUnderlineHeight = -1.0 / 6;
constexpr double kStrikeThroughHeight = 3.0 / 7;
constexpr double kOverlineHeight = 7.0 / 6;

constexpr int kBlanksPerTab = 8;
constexpr int kDefaultBlank = 16; // font units

/// Stands for a character without strokes.
const ZORVisStrokeGlyph& GetBox()
{
    constexpr qint16 kTop = ZORVisStrokeFont::kCapitalHeight;
    static const ZORVisStrokeGlyph box = {16, {{{2, 0}, {14, 0}, {14, kTop}, {2, kTop}, {2, 0}}}};
    return box;
}

/// The code point at \a position, which is moved behind it; half of a pair stands for itself.
char32_t TakeCharacter(QStringView text, qsizetype& position)
{
    const QChar first = text[position++];
    if (first.isHighSurrogate() && position < text.size() && text[position].isLowSurrogate())
        return QChar::surrogateToUcs4(first, text[position++]);
    return first.unicode();
}

bool IsLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

} // namespace

ZORVisVectorTextLayout::ZORVisVectorTextLayout(const ZORVisVectorTextData& data)
    : m_data(data)
    , m_isVertical(data.orientation == Text::Vertical)
    , m_unit(data.textSize / ZORVisStrokeFont::kCapitalHeight)
    , m_pitch(Text::naturalLinePitch * data.textSize + data.lineSpacing)
    , m_slope(std::tan(data.tiltAngle * std::numbers::pi / 180))
{
}

QList<ZORMathSetOfPoints> ZORVisVectorTextLayout::CreatePolylines()
{
    SplitLines();
    for (Line& line : m_lines)
        Measure(line);
    m_length = std::max_element(m_lines.begin(), m_lines.end(), [](const Line& a, const Line& b) {
                   return a.length < b.length;
               })->length;
    Justify();
    PlaceOrigin();
    for (size_t i = 0; i < m_lines.size(); ++i)
        AddLine(m_lines[i], double(i) * m_pitch);
    return std::move(m_polylines);
}

void ZORVisVectorTextLayout::SplitLines()
{
    const QStringView text = m_data.text;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!IsLineBreak(text[i]))
            continue;
        m_lines.push_back({text.sliced(begin, i - begin)});
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        begin = i + 1;
    }
    m_lines.push_back({text.sliced(begin)});
}

void ZORVisVectorTextLayout::Measure(Line& line) const
{
    line.stretchBegin = line.text.lastIndexOf(u'\t') + 1;
    line.length = Walk(line, [&line](const Cell& cell, qsizetype position, double) {
        line.width = std::max(line.width, cell.width);
        line.numStretched += cell.isBlank && position >= line.stretchBegin;
    });
}

void ZORVisVectorTextLayout::Justify()
{
    for (Line& line : m_lines) {
        const double rest = m_length - line.length;
        if (m_data.justification == Text::Center)
            line.begin = rest / 2;
        else if (m_data.justification == Text::Right)
            line.begin = rest;
        else if (m_data.justification == Text::Block && line.numStretched > 0 && &line != &m_lines.back())
            line.stretch = rest / line.numStretched;
    }
}

void ZORVisVectorTextLayout::PlaceOrigin()
{
    const double size = m_data.textSize;
    const double across = double(m_lines.size() - 1) * m_pitch;
    double left = 0;
    double right = m_length;
    double lastBaseline = -across;
    if (m_isVertical) {
        left = -m_lines.front().width / 2;
        right = across + m_lines.back().width / 2;
        lastBaseline = Text::naturalLinePitch * size - m_length;
    }

    // Three anchors a row.
    const int column = m_data.anchor % 3;
    m_originX = column == 0 ? left : column == 1 ? (left + right) / 2 : right;
    switch (m_data.anchor - column) {
    case Text::BottomLeft:
        m_originY = lastBaseline - kDescent * size;
        break;
    case Text::MiddleLeft:
        m_originY = (size + lastBaseline) / 2;
        break;
    case Text::TopLeft:
        m_originY = size;
        break;
    default:
        break;
    }
}

/// Calls visit(cell, place in the text, along) for every character but tabs.
/// \return the length of the line
template<class Visit>
double ZORVisVectorTextLayout::Walk(const Line& line, Visit&& visit) const
{
    double along = 0;
    double length = 0;
    for (qsizetype i = 0; i < line.text.size();) {
        const qsizetype position = i;
        const char32_t character = TakeCharacter(line.text, i);
        if (character == U'\t') {
            length = along = GetNextTab(along);
            continue;
        }
        const Cell cell = GetCell(character);
        visit(cell, position, along);
        length = along + (m_isVertical ? Text::naturalLinePitch * m_data.textSize : cell.width);
        if (cell.isBlank && position >= line.stretchBegin)
            length += line.stretch;
        along = length + m_data.characterSpacing;
    }
    return length;
}

ZORVisVectorTextLayout::Cell ZORVisVectorTextLayout::GetCell(char32_t character) const
{
    const ZORVisStrokeGlyph* glyph = m_data.font.m_font->GetGlyph(character);
    // Fonts may fill unused places, even that of the blank, with a mark.
    if (character != U' ' && glyph && !glyph->strokes.empty())
        return {glyph, false, glyph->advance * m_unit};
    if (!QChar::isSpace(character))
        return {&GetBox(), false, GetBox().advance * m_unit};
    const ZORVisStrokeGlyph* blank = m_data.font.m_font->GetGlyph(U' ');
    return {nullptr, true, (blank ? blank->advance : kDefaultBlank) * m_unit};
}

double ZORVisVectorTextLayout::GetNextTab(double along) const
{
    const double blank = m_isVertical ? Text::naturalLinePitch * m_data.textSize : GetCell(U' ').width;
    const double distance = kBlanksPerTab * blank;
    return distance == 0 ? along : (std::floor(along / distance) + 1) * distance;
}

void ZORVisVectorTextLayout::AddLine(const Line& line, double across)
{
    if (line.text.isEmpty())
        return;
    const double length = Walk(line, [&](const Cell& cell, qsizetype, double along) {
        double x = line.begin + along;
        double y = -across;
        if (m_isVertical) {
            y = -x;
            x = across - cell.width / 2;
        }
        if (cell.glyph)
            AddGlyph(*cell.glyph, x, y);
        if (m_isVertical)
            AddDecorations(x, y, cell.width);
    });
    if (!m_isVertical)
        AddDecorations(line.begin, -across, length);
}

void ZORVisVectorTextLayout::AddGlyph(const ZORVisStrokeGlyph& glyph, double x, double y)
{
    for (const std::vector<ZORVisStrokePoint>& stroke : glyph.strokes) {
        ZORMathSetOfPoints points;
        points.reserve(qsizetype(stroke.size()));
        for (const ZORVisStrokePoint& point : stroke)
            points.append(Evaluate(x + point.x * m_unit, y, point.y * m_unit));
        AddPolyline(std::move(points));
    }
}

void ZORVisVectorTextLayout::AddDecorations(double x, double y, double length)
{
    const auto add = [&](Text::Decoration decoration, double height) {
        if (!m_data.decorations.testFlag(decoration))
            return;
        height *= m_data.textSize;
        AddPolyline({Evaluate(x, y, height), Evaluate(x + length, y, height)});
    };
    add(Text::Underline, kUnderlineHeight);
    add(Text::StrikeThrough, kStrikeThroughHeight);
    add(Text::Overline, kOverlineHeight);
}

void ZORVisVectorTextLayout::AddPolyline(ZORMathSetOfPoints&& points)
{
    const bool isFinite =
        std::all_of(points.cbegin(), points.cend(), [](const ZORMathPoint& p) { return p.IsFinite(); });
    if (isFinite)
        m_polylines.append(std::move(points));
}

/// The point that lies \a height above the baseline of a character, slanted about that baseline.
ZORMathPoint ZORVisVectorTextLayout::Evaluate(double x, double y, double height) const
{
    return m_data.plane.Evaluate(x + m_slope * height - m_originX, y + height - m_originY);
}
