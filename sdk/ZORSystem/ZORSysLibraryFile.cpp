#include "ZORSysLibraryFile.h"

#include "trace/ZORSysElfFile_p.h"
#include "trace/ZORSysElfLinkage_p.h"

#include <ZORSystem/ZORSysFile.h>

bool ZORSysLibraryFile::IsWhole(const QString& fileName)
{
    ZORSysFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    zor::sys::ElfFile library(file.handle());
    return library.ReadHeaders() && library.IsSharedLibrary() && IsLinkable(library);
}
