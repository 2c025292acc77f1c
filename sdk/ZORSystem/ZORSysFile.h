// File that opens only where nobody has to be waited for.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QCoreApplication>
#include <QFile>

#include <memory>

/// A file that opens only if neither opening nor reading nor writing can wait for another program or a person.
///
/// Opening a named pipe waits until somebody opens its other end, a terminal waits for somebody to type, and devices
/// may never end. Files with names that a user or a document chose are therefore opened by this class.
///
/// | opens for | what                                                                                      |
/// |-----------|-------------------------------------------------------------------------------------------|
/// | reading   | regular files                                                                             |
/// | writing   | regular files, names that are free, and the null and full devices, which answer at once    |
///
/// A symbolic link counts as what it leads to. Everything else, such as pipes, sockets, folders, terminals and other
/// devices, fails to open.
///
/// A file that is open for reading only ends where it ended when it was opened, even if it keeps growing. One that is
/// shortened meanwhile ends earlier. Like any QFile, it must not be mapped while another program may shorten it.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT ZORSysFile final : public QFile
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysFile)

public:
    explicit ZORSysFile(const QString& path);
    ~ZORSysFile() override;

    /// Returns the reason why \a path cannot be opened without waiting: "it is a folder" or "it is not a regular file".
    /// Returns an empty text if it can, and if it cannot even be examined, for example because it does not exist.
    ///
    /// Meant for functions that take a path and open it by themselves. Where the file is opened here, open() decides,
    /// which leaves nobody the time to replace the file after its examination.
    /// \param mode  what the file is to be opened for
    static QString FindObstacle(const QString& path, OpenMode mode);

    /// Opens the file. The file is neither created nor truncated if it cannot be opened.
    /// \return false with errorString() "it is a folder", "it is not a regular file", the reason of the system, or
    ///         "read error: %1" for an empty file that cannot even be read
    bool open(OpenMode mode) override;
    /// Returns "read error: %1" with the reason of the system if reading has failed since the file was opened, and an
    /// empty text if not. What was read before the error looks like all of a shorter file: call this after reading.
    QString GetReadError() const;
    /// Returns the path given to the constructor.
    QString fileName() const override;
    qint64 size() const override;
    bool atEnd() const override;

protected:
    qint64 readData(char* data, qint64 maximumSize) override;

private:
    bool IsBounded() const { return isOpen() && !isWritable(); }

    class Private;
    const std::unique_ptr<Private> d;
};
