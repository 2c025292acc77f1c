// Pieces of reports in the HTML that QTextDocument shows.

#pragma once

#include <QString>
#include <QStringList>

/// Texts are taken as HTML; numbers are written with a point, whatever the language.
namespace ZORNestHtml {

/// Pixels: as wide as a small window shows.
constexpr int kPageWidth = 468;

// Colours that can be read on white and on black.
constexpr char kGoodColor[] = "#2f9e6e";
constexpr char kBadColor[] = "#d9534f";
constexpr char kQuietColor[] = "#808890";
constexpr char kEmptyColor[] = "#c3c9d0";

/// Without needless zeros behind the point.
QString Plain(double value, int decimals);
/// Millimetres with one decimal at most.
QString Length(double millimetres);
/// The units that numbers of one column share.
enum class Unit { Small, Large };
/// Large where the longest length of a column has 10 m or more.
Unit ChooseLengthUnit(double longest);
/// Large where the smallest area of a column has 0.01 m² or more.
Unit ChooseAreaUnit(double smallest);
/// As Length(), or in meters.
QString LongLength(double millimetres, Unit unit);
/// Square millimeters or square meters.
QString Area(double squareMillimetres, Unit unit);
QString Percent(double share);
QString Time(double seconds);

QString Heading(const QString& text);
QString Paragraph(const QString& text, const char* color, const char* style = "");
/// A bar that is filled to a share of its length.
QString Bar(double share);

/// Names and values, two of each in a row.
class Facts
{
public:
    void Add(const QString& name, const QString& value);
    QString Write() const;

private:
    QStringList m_cells;
};

/// Rows below a line of headings; the first column is narrow.
class Table
{
public:
    explicit Table(const QStringList& headings);
    /// \param first  the first cell, tags and all
    void AddRow(const QString& first, const QStringList& cells);
    QString Write() const;

private:
    QString m_rows;
};

} // namespace ZORNestHtml
