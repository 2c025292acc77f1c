#include "ZORWorkResource.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileName.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int MaximumNumber = 9999;

// "part.msi", "part-2.msi", "part-3.msi" ... A name that starts with its only dot has no suffix.
QString GetCandidate(const QFileInfo& file, int number)
{
    if (number == 1)
        return file.fileName();
    const QString name = file.fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    const qsizetype stem = dot > 0 ? dot : name.size();
    const QString end = u'-' + QString::number(number) + name.mid(stem);
    return ZORSysFileName::Cut(name.left(stem), end.toUtf8().size()) + end;
}

} // namespace

ZORWorkResource::ZORWorkResource(const QString& path)
    : m_path(path)
{
    ZOR_TRACE_CALL(path);
}

bool ZORWorkResource::ConvertToLocalStorage(const QString& directory, LocalConversionBehavior behavior,
                                            QStringList* written) const
{
    ZOR_TRACE_CALL(directory, behavior, static_cast<const void*>(written));
    const QFileInfo source(m_path);
    // An empty directory would be the current one: nobody means that.
    if (directory.isEmpty() || !QFileInfo(directory).isDir() || !source.isFile())
        return false;

    const QDir target(directory);
    if (behavior == CopyIfElsewhere && source.canonicalPath() == QFileInfo(directory).canonicalFilePath()) {
        if (written)
            written->append(m_path);
        return true;
    }
    for (int number = 1; number <= MaximumNumber; ++number) {
        const QString path = target.filePath(GetCandidate(source, number));
        // A dangling link does not "exist" and yet takes the name.
        if (QFileInfo::exists(path) || QFileInfo(path).isSymLink())
            continue;
        // Neither of the two writes over a file that has come between.
        const bool done = behavior == Move ? QFile::rename(m_path, path) : QFile::copy(m_path, path);
        if (done) {
            if (written)
                written->append(path);
            return true;
        }
        if (!QFileInfo::exists(path))
            return false;
    }
    return false;
}

void ZorTraceAppend(QByteArray& out, const ZORWorkResource& resource)
{
    ZorTraceAppend(out, resource.m_path);
}
