// Export macro of the library ZORComposites.

#pragma once

#include <QtGlobal>

#ifdef ZORComposites_EXPORTS // defined by CMake while the library itself is compiled
#define ZORCOMPOSITES_EXPORT Q_DECL_EXPORT
#else
#define ZORCOMPOSITES_EXPORT Q_DECL_IMPORT
#endif
