// File that is written as a whole or not at all.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <memory>

class QFileDevice;
class QIODevice;

/// Writes a file so that its old content stays until the new one is complete.
///
/// Where the folder allows it, the new content is collected in an unnamed file of the same folder and takes the
/// place of the old one in one step: whoever reads the file, even after a kill, sees all of the old or all of the new
/// content. Permissions, and the owner as far as the system permits, stay; symbolic links are followed and stay;
/// other hard links keep the old content.
///
/// Where the file itself can be written and read but not replaced (its folder is read-only, for example), the content
/// is collected in memory. Commit() then copies the old content into memory, reserves the space, and writes over the
/// file; after any error the old content is restored. Only a kill while Commit() runs may lose it.
///
/// The null and full devices are written to at once. What ZORSysFile refuses to open for writing, such as pipes and
/// other devices, cannot be opened.
///
/// A kill between the last two calls of a commit can leave a hidden file ".zor-save-*" beside the file, complete.
/// File systems without unnamed files, network drives for example, may be left with an incomplete one.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT ZORSysReplacedFile
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysReplacedFile)

public:
    /// \param path  may name a file that does not exist; its folder must exist
    explicit ZORSysReplacedFile(const QString& path);
    /// Without a commit, the file stays as it was.
    ~ZORSysReplacedFile();
    Q_DISABLE_COPY_MOVE(ZORSysReplacedFile)

    /// Checks that the file can be written and prepares that, without touching it.
    /// \throws ZORSysFileOpenException with the path and the reason
    void Open();
    /// Takes the content; owned by this object, unbuffered: large pieces are best. It writes all bytes or fails with
    /// the reason.
    QFileDevice& GetDevice();
    /// Writes \a content to the device.
    /// \return whether all of it could be written; GetErrorString() gives the reason otherwise
    bool Write(const QByteArray& content);
    /// Brings the content to the disk and into its place, and closes the device.
    /// \return whether all of it is there; GetErrorString() gives the reason otherwise. False as well when an
    ///         earlier write failed.
    bool Commit();
    /// As Commit(), for a new file: fails if the name is taken meanwhile, and does not wait for the disk.
    bool CommitNew();
    /// Reason of the last failure, for example "No space left on device".
    QString GetErrorString() const;

    /// Replaces the content of the file \a path by \a content, as above.
    /// \return the reason of the failure, for example "No space left on device"; empty when all went well
    static QString Replace(const QString& path, const QByteArray& content);
    /// Writes \a bytes to \a device and flushes a file. A device that takes only a part is asked again, so that it
    /// names the reason when it takes no more.
    /// \return whether all of it was written; device.errorString() gives the reason otherwise
    static bool WriteAll(QIODevice& device, const QByteArray& bytes);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
