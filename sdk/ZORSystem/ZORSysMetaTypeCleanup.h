// Takes the types of a plug-in library out of Qt's registry.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QtGlobal>

/// One static object in a plug-in library: while the library is unmapped, it unregisters the types that Qt knows
/// by data of that library.
///
/// Qt registers a type on its first conversion or call by name and keeps a pointer to whichever copy of its
/// description came first; left there, it would be read by the next library that uses a type of that name.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT ZORSysMetaTypeCleanup
{
public:
    /// \param address  of any static data of the library
    explicit ZORSysMetaTypeCleanup(const void* address);
    ~ZORSysMetaTypeCleanup();
    Q_DISABLE_COPY_MOVE(ZORSysMetaTypeCleanup)

private:
    const void* const m_address;
};
