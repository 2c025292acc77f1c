// Logging category of the module, "zor.geometry".

#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(ZorGeometryLog)
