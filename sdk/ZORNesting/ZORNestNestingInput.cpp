#include "ZORNestNestingInput.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestNestingInputData : public QSharedData
{
public:
    QString materialId;
    double materialThickness = 0;
    QList<ZORNestNestingInputItem> items;
    QList<ZORNestNestingInputPackaging> packagings;
    double maxDeviation = 0;
    double deviationIncrement = 0;
    bool isSingleSided = false;
    bool isGrain90Set = false;
    bool isGrain180Set = false;
    bool isGrain270Set = false;
    double itemSeparation = 0;
    double frameWidth = 0;
    ZORNestBaseFeature::PackagingUsageRule packagingUsageRule = ZORNestBaseFeature::AsListed;
    double maxRunTime = 0;
    double minRunTime = 0;
    int stackSize = 0;
    quint64 seed = 1;
    qint64 maxSteps = 0;
};

ZORNestNestingInput::ZORNestNestingInput(const QString& materialId, double thickness,
                                         const QList<ZORNestNestingInputItem>& items,
                                         const QList<ZORNestNestingInputPackaging>& packagings)
    : d(new ZORNestNestingInputData)
{
    ZOR_TRACE_CALL(materialId, thickness, items, packagings);
    d->materialId = materialId;
    d->materialThickness = thickness;
    d->items = items;
    d->packagings = packagings;
}

ZORNestNestingInput::ZORNestNestingInput(const ZORNestNestingInput& other) = default;
ZORNestNestingInput::ZORNestNestingInput(ZORNestNestingInput&& other) noexcept = default;
ZORNestNestingInput& ZORNestNestingInput::operator=(const ZORNestNestingInput& other) = default;
ZORNestNestingInput& ZORNestNestingInput::operator=(ZORNestNestingInput&& other) noexcept = default;
ZORNestNestingInput::~ZORNestNestingInput() = default;

QString ZORNestNestingInput::GetMaterialID() const
{
    return d->materialId;
}

double ZORNestNestingInput::GetMaterialThickness() const
{
    return d->materialThickness;
}

QList<ZORNestNestingInputItem> ZORNestNestingInput::GetItems() const
{
    return d->items;
}

QList<ZORNestNestingInputPackaging> ZORNestNestingInput::GetPackagings() const
{
    return d->packagings;
}

void ZORNestNestingInput::SetMaxDeviation(double angle)
{
    ZOR_TRACE_CALL(angle);
    d->maxDeviation = angle;
}

double ZORNestNestingInput::GetMaxDeviation() const
{
    return d->maxDeviation;
}

void ZORNestNestingInput::SetDeviationIncrement(double angle)
{
    ZOR_TRACE_CALL(angle);
    d->deviationIncrement = angle;
}

double ZORNestNestingInput::GetDeviationIncrement() const
{
    return d->deviationIncrement;
}

void ZORNestNestingInput::SetSingleSidedMaterial(bool isSingleSided)
{
    ZOR_TRACE_CALL(isSingleSided);
    d->isSingleSided = isSingleSided;
}

bool ZORNestNestingInput::IsSingleSidedMaterial() const
{
    return d->isSingleSided;
}

void ZORNestNestingInput::SetGrain90(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    d->isGrain90Set = isSet;
}

bool ZORNestNestingInput::IsGrain90Set() const
{
    return d->isGrain90Set;
}

void ZORNestNestingInput::SetGrain180(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    d->isGrain180Set = isSet;
}

bool ZORNestNestingInput::IsGrain180Set() const
{
    return d->isGrain180Set;
}

void ZORNestNestingInput::SetGrain270(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    d->isGrain270Set = isSet;
}

bool ZORNestNestingInput::IsGrain270Set() const
{
    return d->isGrain270Set;
}

void ZORNestNestingInput::SetItemSeparation(double distance)
{
    ZOR_TRACE_CALL(distance);
    d->itemSeparation = distance;
}

double ZORNestNestingInput::GetItemSeparation() const
{
    return d->itemSeparation;
}

void ZORNestNestingInput::SetFrameWidth(double width)
{
    ZOR_TRACE_CALL(width);
    d->frameWidth = width;
}

double ZORNestNestingInput::GetFrameWidth() const
{
    return d->frameWidth;
}

void ZORNestNestingInput::SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule rule)
{
    ZOR_TRACE_CALL(rule);
    d->packagingUsageRule = rule;
}

ZORNestBaseFeature::PackagingUsageRule ZORNestNestingInput::GetPackagingUsageRule() const
{
    return d->packagingUsageRule;
}

void ZORNestNestingInput::SetMaxRunTime(double seconds)
{
    ZOR_TRACE_CALL(seconds);
    d->maxRunTime = seconds;
}

double ZORNestNestingInput::GetMaxRunTime() const
{
    return d->maxRunTime;
}

void ZORNestNestingInput::SetMinRunTime(double seconds)
{
    ZOR_TRACE_CALL(seconds);
    d->minRunTime = seconds;
}

double ZORNestNestingInput::GetMinRunTime() const
{
    return d->minRunTime;
}

void ZORNestNestingInput::SetStackSize(int size)
{
    ZOR_TRACE_CALL(size);
    d->stackSize = size;
}

int ZORNestNestingInput::GetStackSize() const
{
    return d->stackSize;
}

void ZORNestNestingInput::SetSeed(quint64 seed)
{
    ZOR_TRACE_CALL(seed);
    d->seed = seed;
}

quint64 ZORNestNestingInput::GetSeed() const
{
    return d->seed;
}

void ZORNestNestingInput::SetMaxSteps(qint64 steps)
{
    ZOR_TRACE_CALL(steps);
    d->maxSteps = steps;
}

qint64 ZORNestNestingInput::GetMaxSteps() const
{
    return d->maxSteps;
}

void ZorTraceAppend(QByteArray& out, const ZORNestNestingInput& input)
{
    out += '(';
    ZorTraceAppend(out, input.d->materialId);
    out += ", ";
    ZorTraceAppend(out, input.d->items.size());
    out += ", ";
    ZorTraceAppend(out, input.d->packagings.size());
    out += ')';
}
