// Export macro of the library ZORNesting.

#pragma once

#include <QtGlobal>

#ifdef ZORNesting_EXPORTS // defined by CMake while the library itself is compiled
#define ZORNESTING_EXPORT Q_DECL_EXPORT
#else
#define ZORNESTING_EXPORT Q_DECL_IMPORT
#endif
