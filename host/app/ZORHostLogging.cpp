#include "app/ZORHostLogging.h"

Q_LOGGING_CATEGORY(lcHost, "zor.host")
