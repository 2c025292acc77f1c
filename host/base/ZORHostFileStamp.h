// What distinguishes a file from a later state of it.

#pragma once

#include <QString>
#include <QtGlobal>

/// Identity, size and time of a file, to notice that somebody else has written or replaced it meanwhile.
///
/// Thread safety: reentrant.
class ZORHostFileStamp
{
public:
    /// The stamp of a file that is missing.
    ZORHostFileStamp() = default;
    /// Returns the stamp of a file as it is now, behind symbolic links; an invalid one where it cannot be examined.
    static ZORHostFileStamp Of(const QString& path);

    bool IsValid() const { return m_isValid; }

    friend bool operator==(const ZORHostFileStamp&, const ZORHostFileStamp&) = default;

private:
    bool m_isValid = false;
    quint64 m_device = 0;
    quint64 m_number = 0;
    qint64 m_size = 0;
    qint64 m_seconds = 0; // of the last change of the content
    qint64 m_nanoseconds = 0;
};
