#include "ZORNestVisOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestVisOptionsData : public QSharedData
{
public:
    int filters = ZORNestVisOptions::allFilters;
};

ZORNestVisOptions::ZORNestVisOptions()
    : d(new ZORNestVisOptionsData)
{
}

ZORNestVisOptions::ZORNestVisOptions(const ZORNestVisOptions& other) = default;
ZORNestVisOptions::ZORNestVisOptions(ZORNestVisOptions&& other) noexcept = default;
ZORNestVisOptions& ZORNestVisOptions::operator=(const ZORNestVisOptions& other) = default;
ZORNestVisOptions& ZORNestVisOptions::operator=(ZORNestVisOptions&& other) noexcept = default;
ZORNestVisOptions::~ZORNestVisOptions() = default;

void ZORNestVisOptions::SetFilters(int bits)
{
    ZOR_TRACE_CALL(bits);
    d->filters = bits;
}

int ZORNestVisOptions::GetFilters() const
{
    return d->filters;
}

bool operator==(const ZORNestVisOptions& a, const ZORNestVisOptions& b)
{
    return a.d->filters == b.d->filters;
}

void ZorTraceAppend(QByteArray& out, const ZORNestVisOptions& options)
{
    ZorTraceAppend(out, options.d->filters);
}
