// Keeps documents away from the DOM parser that it would choke on.

#pragma once

class QIODevice;

/// Looks at the markup of an XML file, in one pass with constant memory, for what makes QDomDocument grow, hang
/// or overflow its stack out of all proportion to the size of the file.
namespace ZORTestXmlGuard {

/// How deep elements may nest: the DOM descends into them recursively and pays for the depth of each.
constexpr int MaximumDepth = 256;
/// How many attributes an element may have: the parser compares each with each.
constexpr int MaximumAttributes = 256;

/// \param device  open for reading, at its start
/// \return false when the document defines entities, or exceeds one of the limits; true for any other one,
///         well-formed or not
bool IsHarmless(QIODevice* device);

} // namespace ZORTestXmlGuard
