#include "document/ZORHostDocumentFile.h"

#include <ZORGeometry/ZORGeoContainerFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QCoreApplication>
#include <QDir>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostDocumentFile)
};

[[noreturn]] void ThrowCannotWrite(const QString& fileName, const QString& reason)
{
    throw ZORSysFileException(
        Texts::tr("Cannot write '%1': %2").arg(QDir::toNativeSeparators(fileName), reason));
}

} // namespace

bool ZORHostDocumentFile::Write(const ZORGeoContainerFile& content, const QString& fileName,
                                const std::function<bool(double)>& report)
{
    ZORSysReplacedFile file(fileName);
    try {
        file.Open();
        if (!content.Write(file.GetDevice(), report))
            return false;
    } catch (const ZORSysFileOpenException&) {
        ThrowCannotWrite(fileName, file.GetErrorString());
    } catch (const ZORSysException&) {
        if (const QString reason = file.GetDevice().errorString(); file.GetDevice().error() != QFile::NoError)
            ThrowCannotWrite(fileName, reason);
        throw;
    }
    if (!file.Commit())
        ThrowCannotWrite(fileName, file.GetErrorString());
    return true;
}
