#include "ZORNestLayerLook_p.h"

#include <algorithm>
#include <array>

const ZORNestLayerLook& ZORNestLayerLook::Of(ZORNestResultSegment::Layer layer)
{
    using Segment = ZORNestResultSegment;
    using Options = ZORNestVisOptions;
    using Style = ZORVisOptions;
    // Colours that can be told apart on dark and on light backgrounds.
    static const std::array<ZORNestLayerLook, 14> looks = {{
        {Segment::Extra, Options::Extras, {0x8a, 0x8f, 0x98}, 1, Style::Dash},
        {Segment::Automatic, Options::Outlines, {0x4f, 0x9d, 0xe8}, 1.5, Style::Solid},
        {Segment::Nest, Options::Outlines, {0x2f, 0xb3, 0x8a}, 1.5, Style::Solid},
        {Segment::NonNestable, Options::Outlines, {0xd8, 0x4b, 0x4b}, 1.5, Style::Dash},
        {Segment::Tabs, Options::TabMarks, {0xf0, 0x8c, 0x1e}, 3, Style::Solid},
        {Segment::AutoNibble, Options::TabMarks, {0xb8, 0x6b, 0x2d}, 2, Style::Dot},
        {Segment::AutoBridge, Options::TabMarks, {0xe0, 0x5a, 0x9a}, 3, Style::Dash},
        {Segment::EtchBox, Options::Etching, {0x9b, 0x6f, 0xd6}, 1, Style::Chain},
        {Segment::EtchingData, Options::Etching, {0xc0, 0x9a, 0xf0}, 1, Style::Solid},
        {Segment::LeadOut, Options::Leads, {0xd9, 0xb8, 0x2f}, 1, Style::Dot},
        {Segment::LeadIn, Options::Leads, {0xa8, 0xc6, 0x3a}, 1, Style::Solid},
        {Segment::LineString, Options::Strings, {0x3f, 0xb7, 0xc9}, 1, Style::Solid},
        {Segment::GridString, Options::Strings, {0x3f, 0x8f, 0xa0}, 1, Style::Dot},
        {Segment::Grain, Options::GrainMarks, {0x7a, 0xa0, 0x5a}, 2, Style::LongDashDot},
    }};
    const auto* const found = std::find_if(
        looks.begin(), looks.end(), [layer](const ZORNestLayerLook& look) { return look.layer == layer; });
    return found == looks.end() ? looks.front() : *found;
}
