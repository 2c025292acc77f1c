#include "base/ZORHostLogging.h"

Q_LOGGING_CATEGORY(lcHost, "zor.host")
