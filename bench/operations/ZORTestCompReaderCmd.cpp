#include "operations/ZORTestCompReaderCmd.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"

#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORComposites/ZORCompReader.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>

#include <QFileDialog>

ZOR_TEST_REGISTER(ZORTestCompReaderCmd)

namespace {

QStringList GetFilters()
{
    QStringList filters;
    for (const QByteArray& format : ZORCompReader::GetSupportedFormats())
        filters.append(ZORCompReader::GetFormatFileExtensions(format));
    return filters;
}

/// The format that a filter belongs to; empty when it is none of them.
QByteArray FindFormat(const QString& filter)
{
    for (const QByteArray& format : ZORCompReader::GetSupportedFormats()) {
        if (ZORCompReader::GetFormatFileExtensions(format).contains(filter))
            return format;
    }
    return {};
}

} // namespace

ZORTestCompReaderCmd::ZORTestCompReaderCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestCompReaderCmd::Execute()
{
    QString filter;
    const QString fileName =
        QFileDialog::getOpenFileName(GetEnvironment()->GetUiParent(), tr("Open Composites Source File"),
                                     QString(), GetFilters().join(QLatin1String(";;")), &filter);
    if (fileName.isEmpty()) {
        emit Finished(false);
        return;
    }

    const ZORCompReader reader(fileName, FindFormat(filter));
    ZORFeatContainer* const container = GetEnvironment()->GetEnvironment()->GetContainer();
    auto* root =
        qobject_cast<ZORCompRoot*>(container->GetFeatureRoot(ZORCompRoot::staticMetaObject.className()));
    ZORCompReadProcessor processor(root, false);
    reader.Read(&processor);
    processor.Finalize();
    emit Finished(true);
}
