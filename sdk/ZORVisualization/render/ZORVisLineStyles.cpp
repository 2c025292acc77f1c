#include "ZORVisLineStyles_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Drawn '-' and '.', left out ' '. Every pattern begins with a dash and ends with a gap, and has 16 steps.
constexpr std::array<const char*, ZORVisOptions::lineStyleCount> kPictures = {
    "----------------", // solid
    "------  ------  ", // dash
    ".   .   .   .   ", // dot
    "---  .  ---  .  ", // 1 dash 1 dot
    "----------  --  ", // chain
    "----   .   .    ", // 1 dash 2 dot
    "---   .  .  .   ", // 1 dash 3 dot
    "---  ---  .  .  ", // 2 dash 2 dot
    "------  --  --  ", // 2 dash chain
    "--- --- . . .   ", // 2 dash 3 dot
    "-----------  .  ", // long dash dot
    "--------  .  .  ", // long dash 2 dot
    "-------- . . .  ", // long dash 3 dot
};

constexpr uint16_t ToBits(const char* picture)
{
    unsigned bits = 0;
    for (unsigned i = 0; i < 16; ++i)
        bits |= picture[i] == ' ' ? 0U : 1U << i;
    return uint16_t(bits);
}

} // namespace

uint16_t ZORVisLinePattern(ZORVisOptions::LineStyle style)
{
    const auto code = size_t(style);
    return code < kPictures.size() ? ToBits(kPictures[code]) : uint16_t(0xffff);
}

QColor ZORVisEdgeColor(const QColor& surface)
{
    constexpr int kDarkness = 250; // percent
    return surface.darker(kDarkness);
}

int ZORVisLinePatternStep(double thickness)
{
    return std::max(2, int(std::lround(thickness)));
}

QList<int> ZORVisLineDashes(ZORVisOptions::LineStyle style)
{
    const uint16_t pattern = ZORVisLinePattern(style);
    QList<int> lengths;
    if (pattern == 0xffff)
        return lengths;
    bool wasDrawn = false;
    for (unsigned i = 0; i < 16; ++i) {
        const bool drawn = ((pattern >> i) & 1U) != 0;
        if (drawn != wasDrawn)
            lengths.append(0);
        ++lengths.last();
        wasDrawn = drawn;
    }
    return lengths;
}
