// Checks that the XML readers of the translation share.

#pragma once

#include <QXmlStreamReader>

class QByteArray;

namespace ZORNestXml {

/// Checks bytes before a reader reads them, and lets it expand the entities that they declare.
/// \throws ZORSysException with the reason of ZORSysXmlGuard
void CheckMarkup(const QByteArray& bytes, QXmlStreamReader& reader);

/// \throws ZORSysException "line %1: %2" with the reader's error, if it has one
void CheckError(const QXmlStreamReader& reader);

} // namespace ZORNestXml
