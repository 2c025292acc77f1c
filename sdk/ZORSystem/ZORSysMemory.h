// Memory that is left, and work that may need more of it.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QList>
#include <QString>

#include <new>
#include <utility>

/// Memory of this process: what is left of it, and the error of what does not fit.
namespace ZORSysMemory {

/// Returns the number of bytes that this process can still use: the least of what the machine has free, swap
/// included, what the process's control group leaves, and what the limit of its address space (RLIMIT_AS)
/// leaves. Returns the largest qint64 where the system reports none of them.
///
/// The figure is that of the moment; other processes change it. Costs a few system calls.
ZORSYSTEM_EXPORT qint64 GetAvailable();

/// Returns the number of bytes of address space that the limit of the process (RLIMIT_AS) leaves, and the largest qint64
/// without a limit. Libraries may take many more addresses than memory.
ZORSYSTEM_EXPORT qint64 GetAvailableAddresses();

/// Returns "1.2 GB", "45 MB" or "1 MB" for anything smaller, in decimal units.
ZORSYSTEM_EXPORT QString FormatSize(qint64 bytes);

/// Returns FormatSize() of two different sizes that a text compares, both with as many more digits as it takes for the texts
/// to differ: "1.07 GB" and "1.12 GB".
ZORSYSTEM_EXPORT std::pair<QString, QString> FormatSizes(qint64 first, qint64 second);

/// Throws the error of a file that does not fit into the memory.
/// \param subject  the file as the user named it, or what is read instead of a file
/// \param needed   estimated number of bytes; 0 if it is unknown
/// \throws ZORSysFileException "not enough memory to read '%1' (needs about %2)", without the parentheses
///         when \a needed is 0
[[noreturn]] ZORSYSTEM_EXPORT void ThrowCannotRead(const QString& subject, qint64 needed);

/// Returns a list of \a size default-constructed values.
///
/// For lists whose length is read from a file: QList's own constructor and its fill constructor write through a null
/// pointer when there is not enough memory.
/// \throws std::bad_alloc
template<class T>
QList<T> MakeList(qsizetype size)
{
    QList<T> list;
    list.resize(size);
    return list;
}

/// Address space that is kept free for the moment when everything else is used up: for the message about it.
/// Holding it costs address space but no memory.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT Reserve
{
public:
    static constexpr qint64 kDefaultSize = qint64(32) << 20; // bytes

    explicit Reserve(qint64 size = kDefaultSize);
    ~Reserve();
    Q_DISABLE_COPY_MOVE(Reserve)

    /// Reserves the block unless it is held. Fails silently where there is not enough left.
    void Hold();
    /// Returns the block to the system.
    void Release();
    bool IsHeld() const { return m_block != nullptr; }

private:
    const qint64 m_size;
    void* m_block = nullptr; // owned
};

/// Runs \a read and returns its result; running out of memory becomes an exception with a message. A reserve
/// makes sure that there is memory for the message, and for showing it, once \a read has been left.
///
/// What needs twice of what is available is refused before \a read is called, since a system that promises more
/// memory than it has ends the process instead of refusing. \a read leaves everything as it was when an exception leaves it.
/// \throws ZORSysFileException as ThrowCannotRead()
template<class Function>
decltype(auto) Read(const QString& subject, qint64 needed, Function&& read)
{
    try {
        const Reserve reserve;
        if (needed / 2 > GetAvailable())
            ThrowCannotRead(subject, needed);
        return std::forward<Function>(read)();
    } catch (const std::bad_alloc&) {
        ThrowCannotRead(subject, needed);
    }
}

} // namespace ZORSysMemory
