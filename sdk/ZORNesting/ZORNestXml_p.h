// XML readers of the translation, with the guards that they share.

#pragma once

#include <QByteArrayView>
#include <QXmlStreamReader>

/// Looks out for what makes a reader hang or grow out of all proportion to the file.
namespace ZORNestXml {

/// How deep elements may nest, and how many attributes one may have (the reader compares each with each).
constexpr int MaximumDepth = 256;
constexpr int MaximumAttributes = 256;

/// One pass over the bytes, before they are given to a reader.
/// \throws ZORSysException "XML that declares entities cannot be read", "an XML element has more than %1
///         attributes"
void CheckMarkup(QByteArrayView bytes);

/// \throws ZORSysException "line %1: %2" with the reader's error, if it has one
void CheckError(const QXmlStreamReader& reader);
/// \throws ZORSysException "line %1: elements nest more than %2 deep"
void CheckDepth(const QXmlStreamReader& reader, int depth);

} // namespace ZORNestXml
