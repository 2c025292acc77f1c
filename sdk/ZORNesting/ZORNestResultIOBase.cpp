#include "ZORNestResultIOBase.h"

#include <ZORSystem/ZORSysFileException.h>

class ZORNestResultIOBase::Private
{
public:
    QString path;
    QIODevice* device = nullptr; // not owned; null where there is a path
    QString failure;
};

ZORNestResultIOBase::ZORNestResultIOBase(const QString& path)
    : d(new Private{path, nullptr, {}})
{
}

ZORNestResultIOBase::ZORNestResultIOBase(QIODevice* device)
    : d(new Private{{}, device, {}})
{
}

ZORNestResultIOBase::~ZORNestResultIOBase() = default;

const QString& ZORNestResultIOBase::RequirePath() const
{
    if (d->path.isEmpty()) {
        throw ZORSysFileException(tr("the path of the result file is empty"));
    }
    return d->path;
}

QString ZORNestResultIOBase::GetFilePath() const
{
    return d->path;
}

QString ZORNestResultIOBase::GetFailure() const
{
    return d->failure;
}

QIODevice* ZORNestResultIOBase::GetDevice() const
{
    return d->device;
}

void ZORNestResultIOBase::SetFailure(const QString& failure)
{
    d->failure = failure;
}
