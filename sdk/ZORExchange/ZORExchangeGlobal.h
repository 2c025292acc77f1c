// Export macro of the library ZORExchange.

#pragma once

#include <QtGlobal>

#ifdef ZORExchange_EXPORTS // defined by CMake while the library itself is compiled
#define ZOREXCHANGE_EXPORT Q_DECL_EXPORT
#else
#define ZOREXCHANGE_EXPORT Q_DECL_IMPORT
#endif
