#include "ZORSysFileNotices.h"

ZORSysFileNotices::ZORSysFileNotices() = default;
ZORSysFileNotices::~ZORSysFileNotices() = default;

ZORSysFileNotices* ZORSysFileNotices::GetInstance()
{
    static auto* const notices = new ZORSysFileNotices; // never destroyed: threads may report to the end
    return notices;
}

void ZORSysFileNotices::Report(const QString& file, const QStringList& notices)
{
    if (!notices.isEmpty())
        emit Reported(file, notices);
}
