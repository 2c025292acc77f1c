#include "nesting/ZORTestNestVisualizeResultCmd.h"

#include "core/ZORTestRegistration.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdDialogHandler.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestVisRepFactory.h>
#include <ZORNesting/ZORNestVisualizationManager.h>
#include <ZORSystem/ZORSysReplacedFile.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisRepFactory.h>

#include <QBuffer>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include <limits>
#include <memory>

ZOR_TEST_REGISTER(ZORTestNestVisualizeResultCmd)

namespace {

// A picture that cannot be saved is not reported; a file that was there before stays.
void Save(const QImage& image, const QString& path)
{
    QByteArray contents;
    QBuffer buffer(&contents);
    buffer.open(QIODevice::WriteOnly);
    if (!path.isEmpty() && image.save(&buffer, "PNG", -1))
        ZORSysReplacedFile::Replace(path, contents);
}

/// Null without an application that shows commands.
QWidget* GetParentWidget()
{
    const ZORCmdDialogHandler* const handler = ZORCmdController::GetController()->GetDialogHandler();
    return handler ? handler->GetParentWidget() : nullptr;
}

} // namespace

ZORTestNestVisualizeResultCmd::ZORTestNestVisualizeResultCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestNestVisualizeResultCmd::Execute()
{
    const QString path = QFileDialog::getOpenFileName(nullptr, QString(), QString(), tr("MSI files (*.msi)"));
    const ZORNestResult result = ZORNestResultReader(path).Read(nullptr);
    if (!result.IsValid()) {
        QMessageBox::critical(GetParentWidget(), tr("Error"), tr("Could not read the file"), QMessageBox::Ok);
        emit Finished(false);
        return;
    }
    const std::unique_ptr<ZORVisRep> rep(ZORNestVisRepFactory::CreateRep(
        result, ZORNestVisualizationManager::GetInstance()->GetOptionsFromCurrentSetting()));

    constexpr int kLargest = std::numeric_limits<int>::max();
    const int width =
        QInputDialog::getInt(GetParentWidget(), tr("Int"), tr("Width"), 0, -kLargest, kLargest, 1);
    const int height =
        QInputDialog::getInt(GetParentWidget(), tr("Int"), tr("Height"), 0, -kLargest, kLargest, 1);
    const QImage image = ZORVisRepFactory::CreateImage(QSize(width, height), {rep.get()}, QColor::fromRgb(0));
    const QString imagePath =
        QFileDialog::getSaveFileName(nullptr, QString(), QString(), tr("PNG Images (*.png)"));
    Save(image, imagePath);
    emit Finished(true);
}
