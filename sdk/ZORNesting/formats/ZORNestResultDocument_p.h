// The bytes of a nesting result file.

#pragma once

#include <ZORNesting/ZORNestResult.h>

#include <QByteArray>

class QIODevice;

class ZORNestResultDocument
{
public:
    /// Returns what messages call the file: "result file".
    static QString GetKind();
    static QByteArray Write(const ZORNestResult& result);
    /// \param device  read from its position to its end
    /// \throws ZORSysException that names what is wrong
    static ZORNestResult Read(QIODevice& device);
};
