// Kinds of files, recognized by their content.

#pragma once

#include <ZORExchange/ZORExchangeGlobal.h>

class QIODevice;
class QString;

/// Kinds of the files that ZORExcImport reads.
///
///     ZORSysFile file(path);
///     if (file.open(QIODevice::ReadOnly) && ZORExcFileKind::Recognize(file) == ZORExcFileKind::Kind::Container)
namespace ZORExcFileKind {

enum class Kind : int {
    Empty,     ///< a file of 0 bytes
    Container, ///< container file (*.ZORCont)
    Result,    ///< nesting result file (*.msi)
    Contours,  ///< contour file (*.xml)
    LayupXml,  ///< layup, "layup-xml" of ZORCompReader
    LayupJson, ///< layup, "compost-json" of ZORCompReader
    Stl,       ///< everything else: whether it is STL is for ZORGeoStlLoader to decide
};

/// Recognizes a file by its content; its name and its suffix do not matter.
///
/// Reads 256 kB, and up to 16 MB of XML and JSON. A file that is damaged behind its beginning is of its kind all the same.
/// \param device  open for reading, not sequential; its position is the same afterwards
ZOREXCHANGE_EXPORT Kind Recognize(QIODevice& device);
/// Returns what messages call a file of that kind: "container file".
ZOREXCHANGE_EXPORT QString GetName(Kind kind);

} // namespace ZORExcFileKind
