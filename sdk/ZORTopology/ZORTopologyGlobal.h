// Export macro of the library ZORTopology.

#pragma once

#include <QtGlobal>

#ifdef ZORTopology_EXPORTS // defined by CMake while the library itself is compiled
#define ZORTOPOLOGY_EXPORT Q_DECL_EXPORT
#else
#define ZORTOPOLOGY_EXPORT Q_DECL_IMPORT
#endif
