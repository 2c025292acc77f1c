// Why a script cannot go on.

#pragma once

#include <ZORSystem/ZORSysException.h>

/// A step that cannot be done: the widget is not there, the value is no choice, and the like.
class ZORHostScriptError : public ZORSysException
{
public:
    using ZORSysException::ZORSysException;
};
