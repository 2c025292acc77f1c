// Export macro of the library ZORFeatureUI.

#pragma once

#include <QtGlobal>

#ifdef ZORFeatureUI_EXPORTS // defined by CMake while the library itself is compiled
#define ZORFEATUREUI_EXPORT Q_DECL_EXPORT
#else
#define ZORFEATUREUI_EXPORT Q_DECL_IMPORT
#endif
