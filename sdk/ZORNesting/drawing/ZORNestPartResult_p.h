// Parts of a drawing as results.

#pragma once

#include "ZORNestPart_p.h"

#include <ZORNesting/ZORNestResult.h>

/// A result of type translation with one item: first the outline, then its holes, then what is drawn on
/// the part, then its texts. Outlines without a layer of their own are on layer Nest, everything else on
/// EtchingData.
/// \throws ZORSysException "part '%1' has more than %2 outlines and curves"
ZORNestResult ZORNestMakePartResult(const ZORNestPart& part);
