// Entry point of the test programs of the host: as that of the others, with the host's application object.

#include "base/ZORHostApplication.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(
            list_tests)) // needs neither a display nor the time that the application takes to start
        return RUN_ALL_TESTS();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir home; // the settings of whoever runs the tests stay as they are
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, QFile::encodeName(home.path()));
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const ZORHostApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
