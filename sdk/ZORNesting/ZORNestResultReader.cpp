#include "ZORNestResultReader.h"

#include "formats/ZORNestResultDocument_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

ZORNestResultReader::ZORNestResultReader(const QString& path)
    : ZORNestResultIOBase(path)
{
    ZOR_TRACE_CALL(path);
}

ZORNestResultReader::ZORNestResultReader(QIODevice* device)
    : ZORNestResultIOBase(device)
{
    ZOR_TRACE_CALL(device);
}

ZORNestResultReader::~ZORNestResultReader() = default;

ZORNestResult ZORNestResultReader::ReadDocument() const
{
    if (QIODevice* const device = GetDevice()) {
        if (!device->isReadable()) {
            throw ZORSysFileException(tr("the device is not open for reading"));
        }
        return ZORNestResultDocument::Read(*device);
    }
    ZORSysFile file(RequirePath());
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(GetFilePath(), file.errorString());
    return ZORNestResultDocument::Read(file);
}

ZORNestResult ZORNestResultReader::Read(FileFormat* format)
{
    ZOR_TRACE_CALL(format);
    if (format)
        *format = UnknownFormat;
    SetFailure({});
    try {
        const QString subject = GetDevice() ? ZORNestResultDocument::GetKind() : GetFilePath();
        ZORNestResult result = ZORSysMemory::Read(subject, 0, [this] { return ReadDocument(); });
        if (format)
            *format = MsiFormat;
        return result;
    } catch (const ZORSysException& exception) {
        SetFailure(exception.GetMessage());
    }
    return {};
}
