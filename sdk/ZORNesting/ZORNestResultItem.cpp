#include "ZORNestResultItem.h"

#include "drawing/ZORNestSharedList_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

class ZORNestResultItemData : public QSharedData
{
public:
    friend bool operator==(const ZORNestResultItemData& a, const ZORNestResultItemData& b)
    {
        return a.name == b.name && a.partName == b.partName && a.assemblyName == b.assemblyName
               && a.subassemblyName == b.subassemblyName && a.jobName == b.jobName && a.comment == b.comment
               && a.position == b.position && a.orientation == b.orientation && a.isMirrored == b.isMirrored
               && a.shapes == b.shapes;
    }

    QString name;
    QString partName;
    QString assemblyName;
    QString subassemblyName;
    QString jobName;
    QString comment;
    ZORMathPoint position;
    double orientation = 0;
    bool isMirrored = false;
    ZORNestSharedList<ZORNestResultShape> shapes;
};

namespace {

void CheckNumber(bool isFinite)
{
    if (!isFinite) {
        throw ZORSysException(ZORNestResultItem::tr("a number of the item is not finite"));
    }
}

} // namespace

ZORNestResultItem::ZORNestResultItem(const QString& name)
{
    ZOR_TRACE_CALL(name);
    d = new ZORNestResultItemData;
    d->name = name;
}

ZORNestResultItem::ZORNestResultItem(const ZORNestResultItem& other) = default;
ZORNestResultItem::ZORNestResultItem(ZORNestResultItem&& other) noexcept = default;
ZORNestResultItem& ZORNestResultItem::operator=(const ZORNestResultItem& other) = default;
ZORNestResultItem& ZORNestResultItem::operator=(ZORNestResultItem&& other) noexcept = default;
ZORNestResultItem::~ZORNestResultItem() = default;

QString ZORNestResultItem::GetName() const
{
    return d->name;
}

QString ZORNestResultItem::GetPartName() const
{
    return d->partName;
}

void ZORNestResultItem::SetPartName(const QString& name)
{
    ZOR_TRACE_CALL(name);
    d->partName = name;
}

QString ZORNestResultItem::GetAssemblyName() const
{
    return d->assemblyName;
}

void ZORNestResultItem::SetAssemblyName(const QString& name)
{
    ZOR_TRACE_CALL(name);
    d->assemblyName = name;
}

QString ZORNestResultItem::GetSubassemblyName() const
{
    return d->subassemblyName;
}

void ZORNestResultItem::SetSubassemblyName(const QString& name)
{
    ZOR_TRACE_CALL(name);
    d->subassemblyName = name;
}

QString ZORNestResultItem::GetJobName() const
{
    return d->jobName;
}

void ZORNestResultItem::SetJobName(const QString& name)
{
    ZOR_TRACE_CALL(name);
    d->jobName = name;
}

QString ZORNestResultItem::GetComment() const
{
    return d->comment;
}

void ZORNestResultItem::SetComment(const QString& comment)
{
    ZOR_TRACE_CALL(comment);
    d->comment = comment;
}

ZORMathPoint ZORNestResultItem::GetPosition() const
{
    return d->position;
}

void ZORNestResultItem::SetPosition(const ZORMathPoint& position)
{
    ZOR_TRACE_CALL(position);
    CheckNumber(position.IsFinite());
    d->position = position;
}

double ZORNestResultItem::GetOrientation() const
{
    return d->orientation;
}

void ZORNestResultItem::SetOrientation(double angle)
{
    ZOR_TRACE_CALL(angle);
    CheckNumber(std::isfinite(angle));
    d->orientation = angle;
}

bool ZORNestResultItem::IsMirrored() const
{
    return d->isMirrored;
}

void ZORNestResultItem::SetMirrored(bool mirrored)
{
    ZOR_TRACE_CALL(mirrored);
    d->isMirrored = mirrored;
}

QList<const ZORNestResultShape*> ZORNestResultItem::GetShapes() const
{
    return d->shapes.GetPointers();
}

void ZORNestResultItem::AddShape(const ZORNestResultShape& shape)
{
    ZOR_TRACE_CALL(shape);
    d->shapes.Append(shape);
}

bool operator==(const ZORNestResultItem& a, const ZORNestResultItem& b)
{
    return a.d == b.d || *a.d == *b.d;
}

void ZorTraceAppend(QByteArray& out, const ZORNestResultItem& item)
{
    ZorTraceAppend(out, item.d->name);
}
