// What reader and writer of the XML format agree on.

#pragma once

constexpr int kCompXmlVersion = 1;

/// An attribute of the root element: the unit of a quantity. Only these are known.
struct ZORCompXmlUnit
{
    const char* quantity;
    const char* unit;
};

constexpr ZORCompXmlUnit kCompXmlUnits[] = {
    {"length", "mm"}, {"angle", "deg"}, {"stress", "MPa"}, {"density", "t/mm3"}, {"permeability", "m2"},
};
