// Path data of SVG files.

#pragma once

#include "drawing/ZORNestDrawing_p.h"

#include <QStringView>

/// Reads numbers one after the other, with what may stand between them: blanks and one comma.
class ZORNestSvgNumbers
{
public:
    explicit ZORNestSvgNumbers(QStringView text)
        : m_text(text)
    {
    }

    bool ReadNumber(double& number);
    /// A single 0 or 1; the next number may follow without a gap.
    bool ReadFlag(bool& flag);
    /// The next character if it is a letter that is no number's; null otherwise.
    QChar ReadLetter();
    bool IsAtEnd();
    qsizetype GetOffset() const { return m_at; }

private:
    void SkipGap();

    QStringView m_text;
    qsizetype m_at = 0;
};

namespace ZORNestSvgPath {

/// Draws every sub-path as a chain. Of faulty path data, what stands before the fault is drawn, and the
/// report says so, as every viewer of such files does.
void Draw(QStringView data, const ZORNestLook& look, const ZORNestPlaneMap& map, ZORNestDrawing& drawing);

/// Which of the four arcs between two points is drawn: the flags of path data.
struct ArcChoice
{
    bool isLarge = false; ///< more than half a turn
    bool isSweep = false; ///< in the direction of growing angles
};

/// Adds an elliptic arc as path data give it; a line where a radius is 0, nothing where the ends are equal.
void AddArc(ZORNestPlanePoint start, ZORNestPlanePoint end, double rx, double ry, double rotation,
            ArcChoice choice, ZORNestDrawing& drawing);

} // namespace ZORNestSvgPath
