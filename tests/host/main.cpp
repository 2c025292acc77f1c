// Entry point of the test programs of the host: as that of the others, with the host's application object.

#include "base/ZORHostApplication.h"
#include "support/TestMain.h"

#include <QTemporaryDir>

int main(int argc, char** argv)
{
    if (const std::optional<int> exitCode = PrepareTests(argc, argv))
        return *exitCode;
    const QTemporaryDir home; // the settings of whoever runs the tests stay as they are
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, QFile::encodeName(home.path()));
    const ZORHostApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
