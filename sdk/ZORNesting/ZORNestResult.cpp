#include "ZORNestResult.h"

#include "drawing/ZORNestSharedList_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

class ZORNestResultData : public QSharedData
{
public:
    bool isValid = false;
    ZORNestResult::ResultType type = ZORNestResult::Nesting;
    ZORMathBoundingBox sheet;
    int stackSize = 1;
    ZORNestSharedList<ZORNestResultItem> items;
};

ZORNestResult::ZORNestResult()
    : d(new ZORNestResultData)
{
}

ZORNestResult::ZORNestResult(ResultType type)
{
    ZOR_TRACE_CALL(type);
    d = new ZORNestResultData;
    d->isValid = true;
    d->type = type;
}

ZORNestResult::ZORNestResult(const ZORNestResult& other) = default;
ZORNestResult::ZORNestResult(ZORNestResult&& other) noexcept = default;
ZORNestResult& ZORNestResult::operator=(const ZORNestResult& other) = default;
ZORNestResult& ZORNestResult::operator=(ZORNestResult&& other) noexcept = default;
ZORNestResult::~ZORNestResult() = default;

bool ZORNestResult::IsValid() const
{
    return d->isValid;
}

ZORNestResult::ResultType ZORNestResult::GetResultType() const
{
    return d->type;
}

ZORMathBoundingBox ZORNestResult::GetSheet() const
{
    return d->sheet;
}

void ZORNestResult::SetSheet(const ZORMathBoundingBox& sheet)
{
    ZOR_TRACE_CALL(sheet);
    d->sheet = sheet;
}

int ZORNestResult::GetStackSize() const
{
    return d->stackSize;
}

void ZORNestResult::SetStackSize(int count)
{
    ZOR_TRACE_CALL(count);
    if (count < 1) {
        throw ZORSysException(tr("a stack needs at least one sheet"));
    }
    d->stackSize = count;
}

QList<const ZORNestResultItem*> ZORNestResult::GetItems() const
{
    return d->items.GetPointers();
}

void ZORNestResult::AddItem(const ZORNestResultItem& item)
{
    ZOR_TRACE_CALL(item);
    d->items.Append(item);
}

bool operator==(const ZORNestResult& a, const ZORNestResult& b)
{
    return a.d == b.d
           || (a.d->isValid == b.d->isValid && a.d->type == b.d->type && a.d->sheet == b.d->sheet
               && a.d->stackSize == b.d->stackSize && a.d->items == b.d->items);
}

void ZorTraceAppend(QByteArray& out, const ZORNestResult& result)
{
    ZorTraceAppend(out, result.GetItems());
}
