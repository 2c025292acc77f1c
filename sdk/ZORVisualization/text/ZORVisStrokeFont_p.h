// The glyphs of a vector font, read from its file.

#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <vector>

/// Font units: capital letters of a Hershey font are 21 high. x is counted from the left bearing of the
/// glyph to the right, y from the baseline upwards.
struct ZORVisStrokePoint
{
    qint16 x = 0;
    qint16 y = 0;

    friend bool operator==(const ZORVisStrokePoint&, const ZORVisStrokePoint&) = default;
};

struct ZORVisStrokeGlyph
{
    /// From the left bearing to the right one, 0 or more.
    int advance = 0;
    /// Each has one point at least; empty for a blank.
    std::vector<std::vector<ZORVisStrokePoint>> strokes;
};

/// Glyphs of consecutive characters, the first of which is the blank.
///
/// The file is a sequence of records. A record is a number of 5 columns without meaning here, a count of 3
/// columns, and that many pairs of letters: the left and the right bearing first, then points x, y. A letter
/// stands for its distance from 'R', y downwards; the pair " R" lifts the pen. Records may go on over
/// line breaks, which count for nothing.
class ZORVisStrokeFont
{
public:
    static constexpr int kCapitalHeight = 21;

    /// Reads a file. O(n).
    /// \throws ZORSysException "vector font record %1 is damaged", counted from 0, when a field is no number,
    ///         a letter is not printable, the bearings are missing or in the wrong order, or the data end early
    explicit ZORVisStrokeFont(const QByteArray& data);

    /// \return null for a character without record
    const ZORVisStrokeGlyph* GetGlyph(char32_t character) const;
    const std::vector<ZORVisStrokeGlyph>& GetGlyphs() const { return m_glyphs; }

private:
    std::vector<ZORVisStrokeGlyph> m_glyphs;
};
