// The inner form of a container file: the CBOR document.

#pragma once

#include "ZORGeoStoredObject_p.h"
#include "path/ZORGeoProgressReporter_p.h"

/// RFC 8949 with all lengths given: {"format": "ZORCont", "objects": [[class, name, {references}, {links},
/// {values}], ...], "styles": [[object, {values}], ...]}. The styles are missing where there are none. References and
/// links are lists of object numbers, -1 for none. Bulk numbers are the typed arrays of RFC 8746: float64, tag 86, and
/// sint32, tag 78, low byte first.
class ZORGeoContainerDocument
{
public:
    /// \throws zor::geo::Canceled
    static QByteArray Write(const ZORGeoStoredDocument& content, zor::geo::ProgressReporter& progress);
    /// Takes no more memory than a small multiple of the document's length, whatever is in it. The numbers of
    /// references, links and styles are those of objects of the document.
    /// \throws ZORSysFileException "container file is damaged: unexpected content at byte %1 of the document"
    /// \throws zor::geo::Canceled
    static ZORGeoStoredDocument Read(const QByteArray& document, zor::geo::ProgressReporter& progress);
};
