// Library that the tests load and unload: it uses the system module from the other side of a library
// boundary.

#include "SystemTestLibrary.h"

#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysInit.h>
#include <ZORSystem/ZORSysStackMonitor.h>

extern "C" Q_DECL_EXPORT void ZorTestRecordStack()
{
    ZORSysStackMonitor::GetStackMonitor()->Record(QStringLiteral("SystemTestLibrary"), 4);
}

extern "C" Q_DECL_EXPORT void ZorTestThrowFileOpen(const QString& path)
{
    throw ZORSysFileOpenException(path, QStringLiteral("no such device"));
}

extern "C" Q_DECL_EXPORT QString ZorTestCatch(void (*function)())
{
    try {
        function();
    } catch (const ZORSysFileException& exception) {
        return QLatin1String("file: ") + exception.GetMessage();
    } catch (const ZORSysException& exception) {
        return QLatin1String("sdk: ") + exception.GetMessage();
    }
    return QStringLiteral("none");
}

extern "C" Q_DECL_EXPORT void ZorTestRegisterInit(int* counter)
{
    ZORSysRegisterInit([counter] { ++*counter; });
}
