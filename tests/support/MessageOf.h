// What a call throws.

#pragma once

#include <ZORSystem/ZORSysException.h>

#include <QString>

/// The message of the SDK's exception that \a call throws; empty when it throws none.
template<class Call>
QString MessageOf(const Call& call)
{
    try {
        call();
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    }
    return {};
}
