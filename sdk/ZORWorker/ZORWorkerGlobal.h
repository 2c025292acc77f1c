// Export macro of the library ZORWorker.

#pragma once

#include <QtGlobal>

#ifdef ZORWorker_EXPORTS // defined by CMake while the library itself is compiled
#define ZORWORKER_EXPORT Q_DECL_EXPORT
#else
#define ZORWORKER_EXPORT Q_DECL_IMPORT
#endif
