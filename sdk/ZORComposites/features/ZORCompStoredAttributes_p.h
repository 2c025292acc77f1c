// Attributes of composites features in container files.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>

/// Under the key "attributes", as the text of a JSON object; empty for none.
void ZorCompWriteAttributes(const ZORCompAttributed& feature, ZORGeoObjectWriter& writer);
/// \throws ZORSysFileException as ZORGeoObjectReader
void ZorCompReadAttributes(ZORCompAttributed& feature, const ZORGeoObjectReader& reader);
