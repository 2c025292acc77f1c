// Export macro of the library ZORWireframe.

#pragma once

#include <QtGlobal>

#ifdef ZORWireframe_EXPORTS // defined by CMake while the library itself is compiled
#define ZORWIREFRAME_EXPORT Q_DECL_EXPORT
#else
#define ZORWIREFRAME_EXPORT Q_DECL_IMPORT
#endif
