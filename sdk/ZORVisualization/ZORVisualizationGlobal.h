// Export macro of the library ZORVisualization.

#pragma once

#include <QtGlobal>

#ifdef ZORVisualization_EXPORTS // defined by CMake while the library itself is compiled
#define ZORVISUALIZATION_EXPORT Q_DECL_EXPORT
#else
#define ZORVISUALIZATION_EXPORT Q_DECL_IMPORT
#endif
