#include "nesting/ZORTestReadMSIFileCmd.h"

#include "core/ZORTestRegistration.h"
#include "nesting/ZORTestResultDump.h"

#include <ZORNesting/ZORNestResultReader.h>

#include <QFileDialog>

ZOR_TEST_REGISTER(ZORTestReadMSIFileCmd)

ZORTestReadMSIFileCmd::ZORTestReadMSIFileCmd(ZORTestEnvironment* environment)
    : ZORTestCommand(environment)
{
}

void ZORTestReadMSIFileCmd::Execute()
{
    const QString path = QFileDialog::getOpenFileName(nullptr, tr("Select MSI file to read"), QString(),
                                                      tr("MSI Files (*.msi)"));
    if (path.isEmpty()) {
        emit Finished(false);
        return;
    }
    ZORNestResultReader reader(path);
    const ZORNestResult result = reader.Read(nullptr);
    ZORTestDumpResult(result, reader.GetFilePath());
    emit Finished(true);
}
