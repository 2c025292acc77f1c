// A file that goes into a job or comes out of one.

#pragma once

#include <ZORWorker/ZORWorkerGlobal.h>

#include <QCoreApplication>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

class ZORWorkResourceData;

/// Names a file; does not own it, and does not ask for its existence. A value: copies share their data, O(1). One that
/// was moved from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORWORKER_EXPORT ZORWorkResource
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkResource)

public:
    /// What becomes of the file when it is brought into a directory. The numbers are established.
    enum LocalConversionBehavior {
        CopyIfElsewhere = 0, ///< a file that lies in the directory already stays as it is; others are copied
        Move = 1,            ///< the file leaves its place once it has arrived
        Copy = 2             ///< the file stays in its place
    };

    ZORWorkResource();
    explicit ZORWorkResource(const QString& path);
    ZORWorkResource(const ZORWorkResource& other);
    ZORWorkResource(ZORWorkResource&& other) noexcept;
    ZORWorkResource& operator=(const ZORWorkResource& other);
    ZORWorkResource& operator=(ZORWorkResource&& other) noexcept;
    ~ZORWorkResource();
    void swap(ZORWorkResource& other) noexcept { d.swap(other.d); }

    /// The path as it was given.
    QString GetFilePath() const;

    /// Brings the file into the existing directory \a directory, under its own name, or, where that is taken,
    /// under the first free one of "name-2.suffix", "name-3.suffix" ... up to 9999, or a later one while others
    /// remove files from the directory. No existing file is ever written over, not even one that comes into being
    /// meanwhile. The resource keeps naming the original. Costs no more for the thousandth file of a name.
    /// \param written  gets the path of the new file appended (for CopyIfElsewhere that of the file that
    ///                 stayed); not owned, null: not wanted
    /// The new file appears in one step, complete, also where the program is killed.
    /// \return false when the file cannot be read, the directory is none or cannot be written, or no name is
    ///         free. Directory and file stay as they were. A warning has the reason; of many failures in
    ///         succession with the same reason the log gets the first 16 and few of the others, with their number.
    bool ConvertToLocalStorage(const QString& directory, LocalConversionBehavior behavior,
                               QStringList* written = nullptr) const;

    /// Equal paths.
    friend ZORWORKER_EXPORT bool operator==(const ZORWorkResource& a, const ZORWorkResource& b);
    friend ZORWORKER_EXPORT void ZorTraceAppend(QByteArray& out, const ZORWorkResource& resource);

private:
    QSharedDataPointer<ZORWorkResourceData> d;
};

Q_DECLARE_SHARED(ZORWorkResource)
