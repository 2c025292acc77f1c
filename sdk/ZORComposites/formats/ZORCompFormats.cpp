#include "ZORCompFormats_p.h"

#include <ZORComposites/ZORCompFormat.h>

namespace {

// In one file, for the order in which they are listed.
const ZORCompFormatRegistration jsonRegistration(ZorCompJsonFormat());
const ZORCompFormatRegistration xmlRegistration(ZorCompXmlFormat());

} // namespace
