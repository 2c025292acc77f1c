#include "ZORGeometryLog_p.h"

Q_LOGGING_CATEGORY(ZorGeometryLog, "zor.geometry")
