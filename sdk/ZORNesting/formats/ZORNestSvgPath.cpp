#include "ZORNestSvgPath_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <QCoreApplication>

#include <algorithm>
#include <numbers>

using ZORNestSolver::kFullTurn;

namespace {

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool IsBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

} // namespace

void ZORNestSvgNumbers::SkipGap()
{
    while (m_at < m_text.size() && IsBlank(m_text[m_at]))
        ++m_at;
    if (m_at < m_text.size() && m_text[m_at] == u',')
        ++m_at;
    while (m_at < m_text.size() && IsBlank(m_text[m_at]))
        ++m_at;
}

bool ZORNestSvgNumbers::ReadNumber(double& number)
{
    SkipGap();
    qsizetype end = m_at;
    const auto skipDigits = [&] {
        const qsizetype begin = end;
        while (end < m_text.size() && IsDigit(m_text[end]))
            ++end;
        return end - begin;
    };
    if (end < m_text.size() && (m_text[end] == u'+' || m_text[end] == u'-'))
        ++end;
    qsizetype digits = skipDigits();
    if (end < m_text.size() && m_text[end] == u'.') {
        ++end;
        digits += skipDigits();
    }
    if (digits == 0)
        return false;
    if (end < m_text.size() && (m_text[end] == u'e' || m_text[end] == u'E')) {
        const qsizetype mantissa = end++;
        if (end < m_text.size() && (m_text[end] == u'+' || m_text[end] == u'-'))
            ++end;
        if (skipDigits() == 0)
            end = mantissa; // the "e" of a unit
    }
    bool isNumber = false;
    number = m_text.sliced(m_at, end - m_at).toDouble(&isNumber);
    if (!isNumber)
        return false;
    m_at = end;
    return true;
}

bool ZORNestSvgNumbers::ReadFlag(bool& flag)
{
    SkipGap();
    if (m_at == m_text.size() || (m_text[m_at] != u'0' && m_text[m_at] != u'1'))
        return false;
    flag = m_text[m_at++] == u'1';
    return true;
}

QChar ZORNestSvgNumbers::ReadLetter()
{
    SkipGap();
    if (m_at == m_text.size() || !m_text[m_at].isLetter())
        return {};
    return m_text[m_at++];
}

bool ZORNestSvgNumbers::IsAtEnd()
{
    SkipGap();
    return m_at == m_text.size();
}

namespace ZORNestSvgPath {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestSvgPath)
};

class Pen
{
public:
    Pen(QStringView data, const ZORNestLook& look, const ZORNestPlaneMap& map, ZORNestDrawing& drawing)
        : m_numbers(data)
        , m_look(look)
        , m_map(map)
        , m_drawing(drawing)
    {
    }

    void Draw();

private:
    bool ReadPoint(bool isRelative, ZORNestPlanePoint& point);
    bool RunCommand(QChar command, bool isRelative);
    bool DrawStraight(QChar command, bool isRelative);
    bool DrawCubic(bool isSmooth, bool isRelative);
    bool DrawQuadratic(bool isSmooth, bool isRelative);
    bool DrawArc(bool isRelative);
    bool MoveTo(bool isRelative);
    void Begin();
    void End();

    ZORNestSvgNumbers m_numbers;
    const ZORNestLook& m_look;
    const ZORNestPlaneMap& m_map;
    ZORNestDrawing& m_drawing;
    ZORNestPlanePoint m_start; // of the sub-path
    ZORNestPlanePoint m_point;
    ZORNestPlanePoint m_control; // last one of a curve, else the current point
    QChar m_lastCurve;           // C or Q after a curve of that kind
    bool m_isOpen = false;       // something of the sub-path was drawn
};

void Pen::Begin()
{
    if (!m_isOpen)
        m_drawing.BeginChain(m_look, m_map);
    m_isOpen = true;
}

void Pen::End()
{
    if (m_isOpen)
        m_drawing.EndChain(Texts::tr("path without length or extent"));
    m_isOpen = false;
}

bool Pen::ReadPoint(bool isRelative, ZORNestPlanePoint& point)
{
    if (!m_numbers.ReadNumber(point.x) || !m_numbers.ReadNumber(point.y))
        return false;
    if (isRelative)
        point = point + m_point;
    return true;
}

bool Pen::MoveTo(bool isRelative)
{
    End();
    ZORNestPlanePoint point;
    if (!ReadPoint(isRelative, point))
        return false;
    m_start = m_point = point;
    return true;
}

bool Pen::DrawStraight(QChar command, bool isRelative)
{
    ZORNestPlanePoint point = m_point;
    bool isRead = false;
    if (command == u'L') {
        isRead = ReadPoint(isRelative, point);
    } else {
        double value = 0;
        isRead = m_numbers.ReadNumber(value);
        double& coordinate = command == u'H' ? point.x : point.y;
        coordinate = isRelative ? coordinate + value : value;
    }
    if (!isRead)
        return false;
    Begin();
    m_drawing.AddLine(m_point, point);
    m_point = point;
    return true;
}

bool Pen::DrawCubic(bool isSmooth, bool isRelative)
{
    ZORNestPlanePoint first = m_lastCurve == u'C' ? 2 * m_point - m_control : m_point;
    ZORNestPlanePoint second, end;
    if ((!isSmooth && !ReadPoint(isRelative, first)) || !ReadPoint(isRelative, second)
        || !ReadPoint(isRelative, end))
        return false;
    Begin();
    m_drawing.AddBezier({m_point, first, second, end});
    m_control = second;
    m_point = end;
    return true;
}

bool Pen::DrawQuadratic(bool isSmooth, bool isRelative)
{
    ZORNestPlanePoint control = m_lastCurve == u'Q' ? 2 * m_point - m_control : m_point;
    ZORNestPlanePoint end;
    if ((!isSmooth && !ReadPoint(isRelative, control)) || !ReadPoint(isRelative, end))
        return false;
    Begin();
    m_drawing.AddBezier({m_point, control, end});
    m_control = control;
    m_point = end;
    return true;
}

bool Pen::DrawArc(bool isRelative)
{
    double rx = 0, ry = 0, rotation = 0;
    ArcChoice choice;
    ZORNestPlanePoint end;
    if (!m_numbers.ReadNumber(rx) || !m_numbers.ReadNumber(ry) || !m_numbers.ReadNumber(rotation)
        || !m_numbers.ReadFlag(choice.isLarge) || !m_numbers.ReadFlag(choice.isSweep)
        || !ReadPoint(isRelative, end)) {
        return false;
    }
    Begin();
    AddArc(m_point, end, rx, ry, rotation, choice, m_drawing);
    m_point = end;
    return true;
}

bool Pen::RunCommand(QChar command, bool isRelative)
{
    QChar curve;
    bool isFine = false;
    switch (command.unicode()) {
    case u'M':
        isFine = MoveTo(isRelative);
        break;
    case u'L':
    case u'H':
    case u'V':
        isFine = DrawStraight(command, isRelative);
        break;
    case u'C':
    case u'S':
        isFine = DrawCubic(command == u'S', isRelative);
        curve = u'C';
        break;
    case u'Q':
    case u'T':
        isFine = DrawQuadratic(command == u'T', isRelative);
        curve = u'Q';
        break;
    case u'A':
        isFine = DrawArc(isRelative);
        break;
    }
    m_lastCurve = curve;
    return isFine;
}

void Pen::Draw()
{
    bool isFine = true;
    bool isFirst = true;
    while (isFine && !m_numbers.IsAtEnd()) {
        const QChar letter = m_numbers.ReadLetter();
        QChar command = letter.toUpper();
        if (letter.isNull() || (isFirst && command != u'M')) {
            isFine = false;
        } else if (command == u'Z') {
            if (m_isOpen)
                m_drawing.AddLine(m_point, m_start);
            End();
            m_point = m_start;
            m_lastCurve = {};
        } else {
            // More numbers repeat the command; those of a move draw lines.
            const bool isRelative = letter.isLower();
            double unused = 0;
            bool isMore = true;
            while (isFine && isMore) {
                isFine = RunCommand(command, isRelative);
                if (command == u'M')
                    command = u'L';
                ZORNestSvgNumbers ahead = m_numbers;
                isMore = isFine && ahead.ReadNumber(unused);
            }
        }
        isFirst = false;
    }
    End();
    if (!isFine)
        m_drawing.Skip(Texts::tr("rest of faulty path data"));
}

} // namespace

void Draw(QStringView data, const ZORNestLook& look, const ZORNestPlaneMap& map, ZORNestDrawing& drawing)
{
    Pen(data, look, map, drawing).Draw();
}

// From ends to centre as the implementation notes of SVG 1.1 (F.6) have it.
void AddArc(ZORNestPlanePoint start, ZORNestPlanePoint end, double rx, double ry, double rotation,
            ArcChoice choice, ZORNestDrawing& drawing)
{
    rx = std::abs(rx);
    ry = std::abs(ry);
    if (start == end)
        return;
    if (!(rx > 0) || !(ry > 0)) {
        drawing.AddLine(start, end);
        return;
    }
    const double angle = rotation * std::numbers::pi / 180;
    const ZORNestPlanePoint axis{std::cos(angle), std::sin(angle)};
    // In units of the radii, along the axes, about the middle between the ends.
    const ZORNestPlanePoint half = 0.5 * (start - end);
    const ZORNestPlanePoint p{Dot(half, axis) / rx, Dot(half, GetNormal(axis)) / ry};
    const double square = Dot(p, p);
    const double scale = square > 1 ? std::sqrt(square) : 1;
    rx *= scale;
    ry *= scale;
    const ZORNestPlanePoint q = (1 / scale) * p;
    const double distance = std::sqrt(std::max(0.0, 1 / std::max(Dot(q, q), 1e-300) - 1));
    const double side = choice.isLarge == choice.isSweep ? 1 : -1;
    const ZORNestPlanePoint center = side * distance * GetNormal(q);
    const double from = std::atan2(q.y - center.y, q.x - center.x);
    double sweep = std::atan2(-q.y - center.y, -q.x - center.x) - from;
    if (choice.isSweep && sweep <= 0)
        sweep += kFullTurn;
    else if (!choice.isSweep && sweep >= 0)
        sweep -= kFullTurn;
    const ZORNestPlanePoint u = rx * axis;
    const ZORNestPlanePoint v = ry * GetNormal(axis);
    const ZORNestPlanePoint middle = 0.5 * (start + end) + center.x * u + center.y * v;
    drawing.AddConic({middle, u, v, from, from + sweep}, &start, &end);
}

} // namespace ZORNestSvgPath
