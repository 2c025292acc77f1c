// The bytes of a nesting result file.

#pragma once

#include <ZORNesting/ZORNestResult.h>

#include <QByteArray>

class ZORNestResultDocument
{
public:
    static QByteArray Write(const ZORNestResult& result);
    /// \throws ZORSysException that names what is wrong
    static ZORNestResult Read(const QByteArray& file);
};
