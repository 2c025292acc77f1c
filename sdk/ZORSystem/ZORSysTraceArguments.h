// Text form of the arguments in the API trace.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QFlags>
#include <QLatin1String>
#include <QString>

#include <type_traits>

class QObject;
struct QMetaObject;

/// Appends an argument to a traced line. Every type that is passed to ZOR_TRACE_CALL needs an overload
/// that is found by its namespace or class (a friend function of a value class):
/// | argument                    | text                                                     |
/// |-----------------------------|----------------------------------------------------------|
/// | floating-point number       | 17 significant digits; nan, inf, -inf                    |
/// | boolean                     | true, false                                              |
/// | integer, enumerator, flags  | its number                                               |
/// | string                      | UTF-8 in double quotes, with C escapes; null for a null const char* |
/// | byte array                  | bytes[n]                                                 |
/// | list or other container     | [n], n elements                                          |
/// | pointer to a QObject        | its object name in angle brackets; null                  |
/// | meta-object                 | its class name in angle brackets; null                   |
/// | pointer to something else   | <object>; null                                           |
/// | point, vector               | (x, y, z)                                                |
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, double value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QString& value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, QStringView value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, QLatin1String value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const char* value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QByteArray& value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QObject* value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QMetaObject* value);

ZORSYSTEM_EXPORT void ZorTraceAppendInteger(QByteArray& out, qint64 value);
ZORSYSTEM_EXPORT void ZorTraceAppendUnsigned(QByteArray& out, quint64 value);
ZORSYSTEM_EXPORT void ZorTraceAppendBool(QByteArray& out, bool value);
ZORSYSTEM_EXPORT void ZorTraceAppendPointer(QByteArray& out, const void* value);
ZORSYSTEM_EXPORT void ZorTraceAppendCount(QByteArray& out, qsizetype count);

/// Appends \a text with its control characters as C escapes, and \a quote and the backslash where a quote
/// is given.
ZORSYSTEM_EXPORT void ZorTraceAppendEscaped(QByteArray& out, const QByteArray& text, char quote = '\0');

template<class T>
concept ZorTraceNumber = std::is_integral_v<T> || std::is_enum_v<T>;

template<class T>
concept ZorTraceContainer = requires(const T& container)
{
    container.size();
    container.begin() != container.end();
};

template<class T>
constexpr bool kZorHasOwnPointerText =
    std::is_base_of_v<
        QObject, T> || std::is_same_v<T, QMetaObject> || std::is_same_v<T, char> || std::is_function_v<T>;

/// Classes whose pointers have no overload of their own.
template<class T>
concept ZorTracePlainObject = !kZorHasOwnPointerText<std::remove_cv_t<T>>;

template<ZorTraceNumber T>
void ZorTraceAppend(QByteArray& out, T value)
{
    if constexpr (std::is_enum_v<T>)
        ZorTraceAppend(out, static_cast<std::underlying_type_t<T>>(value));
    else if constexpr (std::is_same_v<T, bool>)
        ZorTraceAppendBool(out, value);
    else if constexpr (std::is_unsigned_v<T>)
        ZorTraceAppendUnsigned(out, value);
    else
        ZorTraceAppendInteger(out, value);
}

template<class Enum>
void ZorTraceAppend(QByteArray& out, QFlags<Enum> value)
{
    ZorTraceAppendInteger(out, value.toInt());
}

template<ZorTraceContainer T>
void ZorTraceAppend(QByteArray& out, const T& value)
{
    ZorTraceAppendCount(out, qsizetype(value.size()));
}

template<ZorTracePlainObject T>
void ZorTraceAppend(QByteArray& out, T* value)
{
    ZorTraceAppendPointer(out, value);
}
