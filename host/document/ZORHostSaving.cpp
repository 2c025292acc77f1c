#include "document/ZORHostSaving.h"

#include "base/ZORHostLogging.h"
#include "document/ZORHostDocumentFile.h"

#include <ZORCommand/ZORCmdTask.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoContainerFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>

#include <new>

namespace {

/// An exception of the SDK as a sentence that names the file.
QString ToError(const QString& message, const QString& name)
{
    if (message.contains(name))
        return message.left(1).toUpper() + message.mid(1);
    return ZORHostSaving::tr("Cannot write '%1': %2").arg(name, message);
}

} // namespace

ZORHostSaving::ZORHostSaving(QObject* parent)
    : QObject(parent)
{
}

ZORHostSaving::~ZORHostSaving()
{
    Cancel();
}

void ZORHostSaving::Cancel()
{
    if (m_task)
        m_task->Cancel();
}

ZORHostSaving::Outcome ZORHostSaving::Write(const ZORFeatContainer& container, const QString& fileName)
{
    const QString name = QDir::toNativeSeparators(fileName);
    const QPointer<ZORHostSaving> self(this);
    QString error;
    try {
        if (IsBusy())
            throw ZORSysException(tr("another file is being written"));
        QElapsedTimer timer;
        timer.start();
        const int count = container.GetNumGeometry();
        const bool isWritten = Run(ZORGeoContainerFile::Take(container), fileName);
        const QString format = isWritten ? tr("Saved '%1': %n object(s), %2 in %3 s", nullptr, count)
                                         : tr("Canceled saving '%1'");
        qCInfo(lcHost).noquote() << (isWritten ? format.arg(
                                         name,
                                         QLocale::c().formattedDataSize(QFileInfo(fileName).size(), 1,
                                                                        QLocale::DataSizeSIFormat),
                                         QString::number(double(timer.elapsed()) / 1000, 'f', 2))
                                               : format.arg(name));
        return isWritten ? Outcome::Written : Outcome::Canceled;
    } catch (const ZORSysException& exception) {
        error = ToError(exception.GetMessage(), name);
    } catch (const std::bad_alloc&) {
        error = tr("Not enough memory to write '%1'").arg(name);
    }
    qCWarning(lcHost).noquote() << error;
    if (self)
        m_error = error;
    return Outcome::Failed;
}

bool ZORHostSaving::Run(const ZORGeoContainerFile& content, const QString& fileName)
{
    const auto isWritten = std::make_shared<bool>(false);
    const QPointer<ZORHostSaving> self(this);
    m_error.clear();
    m_task = std::make_shared<ZORCmdTask>([=](const ZORCmdTask::Report& report) {
        *isWritten = ZORHostDocumentFile::Write(content, fileName, report);
    });
    const std::shared_ptr<ZORCmdTask> task = m_task;
    connect(task.get(), &ZORCmdTask::ProgressChanged, this, &ZORHostSaving::ProgressChanged);
    emit Started(fileName);
    task->Start();
    task->Wait();
    if (self) {
        m_task.reset();
        emit Finished();
    }
    task->WaitForThread(); // the event loop may have ended before
    task->ThrowFailure();
    return *isWritten;
}
