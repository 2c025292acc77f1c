// Text listing of what a container file holds.

#pragma once

#include "ZORGeoStoredObject_p.h"

#include <vector>

/// Writes the listing to the file of the debug options, where these ask for it. A failure to write it is
/// logged.
/// \param outcome  what became of the load
void ZorGeoDumpLoad(const std::vector<ZORGeoStoredObject>& objects, const QString& outcome);
