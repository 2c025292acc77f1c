#include "ZORNestHtml_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestHtml)
};

QString Number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

QString WriteTable(int padding, const char* style, const QString& rows)
{
    return QStringLiteral(
               "<table width=\"100%\" cellspacing=\"0\" cellpadding=\"%1\" border=\"0\" style=\"%2\">%3"
               "</table>")
        .arg(QString::number(padding), QLatin1String(style), rows);
}

} // namespace

QString ZORNestHtml::Plain(double value, int decimals)
{
    QString text = Number(value, decimals);
    while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.')))
        text.chop(1);
    return text == u"-0" ? QStringLiteral("0") : text;
}

QString ZORNestHtml::Length(double millimetres)
{
    return Texts::tr("%1 mm").arg(Plain(millimetres, 1));
}

ZORNestHtml::Unit ZORNestHtml::ChooseLengthUnit(double longest)
{
    return longest < 10000 ? Unit::Small : Unit::Large;
}

ZORNestHtml::Unit ZORNestHtml::ChooseAreaUnit(double smallest)
{
    return smallest < 1e4 ? Unit::Small : Unit::Large;
}

QString ZORNestHtml::LongLength(double millimetres, Unit unit)
{
    return unit == Unit::Small ? Length(millimetres) : Texts::tr("%1 m").arg(Number(millimetres / 1000, 2));
}

QString ZORNestHtml::Area(double squareMillimetres, Unit unit)
{
    return unit == Unit::Small ? Texts::tr("%1 mm²").arg(Plain(squareMillimetres, 1))
                               : Texts::tr("%1 m²").arg(Number(squareMillimetres / 1e6, 3));
}

QString ZORNestHtml::Percent(double share)
{
    return Texts::tr("%1 %").arg(Number(100 * share, 1));
}

QString ZORNestHtml::Time(double seconds)
{
    if (seconds < 120)
        return Texts::tr("%1 s").arg(Number(seconds, 1));
    const qint64 whole = std::llround(seconds);
    return Texts::tr("%1 min %2 s").arg(QString::number(whole / 60), QString::number(whole % 60));
}

QString ZORNestHtml::Heading(const QString& text)
{
    return QStringLiteral(
               "<p style=\"font-size:13pt; font-weight:600; margin-top:20px; margin-bottom:4px;\">%1</p>")
        .arg(text);
}

QString ZORNestHtml::Paragraph(const QString& text, const char* color, const char* style)
{
    return QStringLiteral("<p style=\"color:%1; margin-top:0px; margin-bottom:4px; %2\">%3</p>")
        .arg(QLatin1String(color), QLatin1String(style), text);
}

QString ZORNestHtml::Bar(double share)
{
    const int filled = std::clamp(int(std::lround(100 * share)), 0, 100);
    const auto cell = [](int width, const char* color) {
        return width == 0
                   ? QString()
                   : QStringLiteral("<td width=\"%1%\" bgcolor=\"%2\" style=\"font-size:3pt;\">&nbsp;</td>")
                         .arg(QString::number(width), QLatin1String(color));
    };
    return WriteTable(
        0, "margin-top:2px; margin-bottom:4px;",
        QStringLiteral("<tr>%1%2</tr>").arg(cell(filled, kGoodColor), cell(100 - filled, kEmptyColor)));
}

void ZORNestHtml::Facts::Add(const QString& name, const QString& value)
{
    m_cells.append(QStringLiteral("<td width=\"20%\" style=\"color:%1;\">%2</td>"
                                  "<td width=\"30%\" style=\"font-weight:600;\">%3</td>")
                       .arg(QLatin1String(kQuietColor), name, value));
}

QString ZORNestHtml::Facts::Write() const
{
    QString rows;
    for (qsizetype i = 0; i < m_cells.size(); i += 2)
        rows += QStringLiteral("<tr>%1%2</tr>").arg(m_cells[i], m_cells.value(i + 1));
    return WriteTable(2, "", rows);
}

ZORNestHtml::Table::Table(const QStringList& headings)
{
    for (const QString& heading : headings)
        m_rows += QStringLiteral("<th align=\"left\" style=\"color:%1; font-weight:400;\">%2</th>")
                      .arg(QLatin1String(kQuietColor), heading);
    m_rows = QStringLiteral("<tr>%1</tr>").arg(m_rows);
}

void ZORNestHtml::Table::AddRow(const QString& first, const QStringList& cells)
{
    m_rows += QStringLiteral("<tr>%1").arg(first);
    for (const QString& cell : cells)
        m_rows += QStringLiteral("<td>%1</td>").arg(cell);
    m_rows += QStringLiteral("</tr>");
}

QString ZORNestHtml::Table::Write() const
{
    return WriteTable(3, "", m_rows);
}
