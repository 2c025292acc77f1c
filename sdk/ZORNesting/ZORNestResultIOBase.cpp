#include "ZORNestResultIOBase.h"

#include <ZORSystem/ZORSysFileException.h>

ZORNestResultIOBase::ZORNestResultIOBase(const QString& path)
    : m_path(path)
{
}

ZORNestResultIOBase::ZORNestResultIOBase(QIODevice* device)
    : m_device(device)
{
}

ZORNestResultIOBase::~ZORNestResultIOBase() = default;

const QString& ZORNestResultIOBase::RequirePath() const
{
    if (m_path.isEmpty()) {
        throw ZORSysFileException(tr("the path of the result file is empty"));
    }
    return m_path;
}
