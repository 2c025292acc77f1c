// Export macro of the library ZORCommonUI.

#pragma once

#include <QtGlobal>

#ifdef ZORCommonUI_EXPORTS // defined by CMake while the library itself is compiled
#define ZORCOMMONUI_EXPORT Q_DECL_EXPORT
#else
#define ZORCOMMONUI_EXPORT Q_DECL_IMPORT
#endif
