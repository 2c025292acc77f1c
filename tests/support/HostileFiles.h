// Files that readers must refuse or survive.

#pragma once

#include <QString>
#include <QStringList>

#include <sys/types.h>

/// Makes files in a folder; each function returns the path.
namespace HostileFiles {

/// A named pipe without another end.
QString MakePipe(const QString& folder, const QString& name = QStringLiteral("pipe"));
QString MakeSocket(const QString& folder, const QString& name = QStringLiteral("socket"));
/// A file of zeros that takes no room on the disk.
QString MakeZeros(const QString& folder, qint64 size, const QString& name = QStringLiteral("zeros"));
/// A pipe, a link to it, a socket and devices: whatever is neither a regular file nor a folder.
QStringList MakeIrregular(const QString& folder);

/// A file that another process lengthens, and overwrites once it is long, until this is destroyed.
class GrowingFile
{
public:
    /// \param piece  what the file consists of
    GrowingFile(const QString& folder, const QByteArray& piece);
    ~GrowingFile();
    Q_DISABLE_COPY_MOVE(GrowingFile)

    const QString& GetPath() const { return m_path; }

private:
    const QString m_path;
    const pid_t m_writer;
};

} // namespace HostileFiles
