#include "RandomUserMemory.h"

#include "docks/ZORHostLineModel.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysException.h>

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QWidget>

#include <malloc.h>

namespace {

constexpr double kBytesPerMegabyte = 1024 * 1024;

/// Resident memory of this process, bytes.
double GetResidentMemory()
{
    constexpr double kBytesPerKilobyte = 1024;
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).chopped(2).trimmed().toDouble() * kBytesPerKilobyte;
    }
    return 0;
}

/// Large blocks, which the heap takes from the system one by one, included.
double GetMemoryInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd);
}

int CountEntries(const char* folder)
{
    return int(
        QDir(QLatin1String(folder)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

/// What a file of the document would take, bytes; 0 while it cannot be saved.
double GetDocumentSize(const ZORFeatContainer* container)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    try {
        container->Save(file);
    } catch (const ZORSysException&) {
        return 0;
    }
    return double(file.size());
}

QString DescribeDocument()
{
    const ZORFeatEnvironment* environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!environment)
        return QStringLiteral("no document");
    return QStringLiteral("%1 geometries in %2 MB, %3 visual objects")
        .arg(QString::number(environment->GetContainer()->GetNumGeometry()),
             QString::number(GetDocumentSize(environment->GetContainer()) / kBytesPerMegabyte, 'f', 1),
             QString::number(environment->GetNumVirtualObjects()));
}

int CountLines()
{
    int numLines = 0;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        const auto models = window->findChildren<ZORHostLineModel*>();
        for (const ZORHostLineModel* model : models)
            numLines += model->rowCount();
    }
    return numLines;
}

} // namespace

QString DescribeRandomUserMemory()
{
    const QString document = DescribeDocument();
    malloc_trim(0);
    return QStringLiteral("%1 MB resident, %2 MB in use; %3, %4 lines in docks, %5 windows of %6 widgets, "
                          "%7 threads, %8 open files")
        .arg(QString::number(GetResidentMemory() / kBytesPerMegabyte, 'f', 1),
             QString::number(GetMemoryInUse() / kBytesPerMegabyte, 'f', 1), document,
             QString::number(CountLines()), QString::number(QApplication::topLevelWidgets().size()),
             QString::number(QApplication::allWidgets().size()),
             QString::number(CountEntries("/proc/self/task")),
             QString::number(CountEntries("/proc/self/fd")));
}
