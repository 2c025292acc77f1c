// Keeps documents away from XML parsers that would choke on them.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

class QByteArray;
class QIODevice;
class QString;

/// Scans the markup of an XML document for what makes Qt's parsers grow, hang or overflow their stack out of all
/// proportion to the size of the document.
///
/// Internal entities and default values of attributes that a document declares are followed where they are used,
/// and may add 1,048,576 characters and four for each byte of the document. External entities and document types
/// are ignored, as Qt's parsers ignore them: nothing but the device is read.
namespace ZORSysXmlGuard {

/// Number of elements, or of entities, that may be nested. The DOM descends into elements recursively and
/// pays for the depth of each.
constexpr int kMaximumDepth = 4000;
/// Number of attributes of an element, and of all those that a document type declares. Parsers compare each
/// attribute of an element with each other one.
constexpr int kMaximumAttributes = 4000;

enum class Verdict { Harmless, TooDeep, TooManyAttributes, TooMuchExpansion, Malformed };

/// Says what a scan has found.
/// Thread safety: reentrant; objects may be shared read-only.
struct Finding
{
    Verdict verdict = Verdict::Harmless;
    /// Number of characters that were added by entities: the limit for QXmlStreamReader::setEntityExpansionLimit().
    int numExpanded = 0;
};

/// Scans a document in one pass. The time and the memory are linear in its size.
///
/// Harmless does not mean well-formed: what a parser refuses by itself is not examined.
/// \param device  open for reading, at its start; not owned
/// \return Malformed for what a parser may misunderstand: entities that contain themselves or end the document
///         type, characters of code 0
ZORSYSTEM_EXPORT Finding Scan(QIODevice& device);
/// Scans a document in memory.
ZORSYSTEM_EXPORT Finding Scan(const QByteArray& document);

/// Returns "XML elements nest more than %1 deep", "an XML element has more than %1 attributes", "the entities of the
/// XML expand too far" or "XML is not well-formed"; empty for Harmless.
ZORSYSTEM_EXPORT QString GetReason(Verdict verdict);

} // namespace ZORSysXmlGuard
