#include "ZORVisRepSet.h"

#include <ZORSystem/ZORSysApiTrace.h>

namespace {

ZORVisRep::Items ItemsOf(const QList<ZORVisRep*>& reps)
{
    ZORVisRep::Items items;
    for (const ZORVisRep* rep : reps) {
        if (rep)
            items.insert(items.end(), rep->GetItems().begin(), rep->GetItems().end());
    }
    return items;
}

} // namespace

ZORVisRepSet::ZORVisRepSet(const QList<ZORVisRep*>& reps)
    : ZORVisRep(ItemsOf(reps))
{
    ZOR_TRACE_CALL(reps);
}
