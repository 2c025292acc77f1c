// Name of a function in the API trace.

#pragma once

#include <QByteArray>

/// "Class::Method" of what the compiler says about a function (__PRETTY_FUNCTION__): without the return
/// type, the arguments, template arguments and unnamed namespaces; "Class::Class" for a constructor,
/// "Class::operator<<" for an operator, and for a lambda the function around it.
QByteArray ZorSysCalledName(QByteArrayView prettyFunction);
