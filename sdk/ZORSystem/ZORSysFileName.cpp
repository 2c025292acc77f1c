#include "ZORSysFileName.h"

#include <algorithm>

namespace {

bool IsWithinCharacter(char byte)
{
    return (byte & 0xC0) == 0x80;
}

} // namespace

QString ZORSysFileName::Cut(const QString& stem, qsizetype reserved)
{
    const QByteArray utf8 = stem.toUtf8();
    qsizetype end = std::max<qsizetype>(0, kMostBytes - reserved);
    if (utf8.size() <= end)
        return stem;
    while (end > 0 && (IsWithinCharacter(utf8[end]) || utf8[end - 1] == ' '))
        --end;
    return QString::fromUtf8(utf8.first(end));
}
