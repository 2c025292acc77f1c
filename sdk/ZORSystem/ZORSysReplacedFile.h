// File that is written as a whole or not at all.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QString>

#include <memory>

class QFileDevice;

/// Writes a file so that its old content stays until the new one is complete.
///
/// A plain file is written beside its place and renamed by Commit(); without Commit(), the old one stays as it
/// is. Nothing is buffered: large pieces are best. The null and full devices are written to at once and never replaced. What
/// ZORSysFile refuses to open for writing, such as pipes and other devices, cannot be opened.
class ZORSYSTEM_EXPORT ZORSysReplacedFile
{
public:
    explicit ZORSysReplacedFile(const QString& path);
    /// Without Commit(), forgets what was written.
    ~ZORSysReplacedFile();
    Q_DISABLE_COPY_MOVE(ZORSysReplacedFile)

    /// Opens for writing.
    /// \throws ZORSysFileOpenException with the path and the reason
    void Open();
    /// Owned by this object.
    QFileDevice& GetDevice() { return *m_device; }
    /// Brings the content to the disk and into its place.
    /// \return whether all of it is there; GetErrorString() tells the reason when not
    bool Commit();
    QString GetErrorString() const;

private:
    const QString m_path;
    const std::unique_ptr<QFileDevice> m_device;
};
