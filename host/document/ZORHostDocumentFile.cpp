#include "document/ZORHostDocumentFile.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>

#include <new>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostDocumentFile)
};

} // namespace

QString ZORHostDocumentFile::Write(const ZORFeatContainer& container, const QString& fileName)
{
    const QString name = QDir::toNativeSeparators(fileName);
    QByteArray contents;
    try {
        QBuffer buffer(&contents);
        buffer.open(QIODevice::WriteOnly);
        container.Save(buffer);
        const QString reason = ZORSysReplacedFile::Replace(fileName, contents);
        return reason.isEmpty() ? QString() : Texts::tr("Cannot write '%1': %2").arg(name, reason);
    } catch (const ZORSysException& exception) {
        return Texts::tr("Cannot write '%1': %2").arg(name, exception.GetMessage());
    } catch (const std::bad_alloc&) {
        contents = {};
        return Texts::tr("Not enough memory to write '%1'").arg(name);
    }
}
