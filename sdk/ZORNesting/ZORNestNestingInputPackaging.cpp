#include "ZORNestNestingInputPackaging.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestNestingInputPackagingData : public QSharedData
{
public:
    QString name;
    double width = 0;
    double length = 0;
    int quantity = 1;
    double leftTrim = 0;
    double rightTrim = 0;
    double topTrim = 0;
    double bottomTrim = 0;
    double cost = 0;
};

ZORNestNestingInputPackaging::ZORNestNestingInputPackaging(const QString& name, double width, double length)
    : d(new ZORNestNestingInputPackagingData)
{
    ZOR_TRACE_CALL(name, width, length);
    d->name = name;
    d->width = width;
    d->length = length;
}

ZORNestNestingInputPackaging::ZORNestNestingInputPackaging(const ZORNestNestingInputPackaging& other) =
    default;
ZORNestNestingInputPackaging::ZORNestNestingInputPackaging(ZORNestNestingInputPackaging&& other) noexcept =
    default;
ZORNestNestingInputPackaging&
ZORNestNestingInputPackaging::operator=(const ZORNestNestingInputPackaging& other) = default;
ZORNestNestingInputPackaging&
ZORNestNestingInputPackaging::operator=(ZORNestNestingInputPackaging&& other) noexcept = default;
ZORNestNestingInputPackaging::~ZORNestNestingInputPackaging() = default;

QString ZORNestNestingInputPackaging::GetName() const
{
    return d->name;
}

double ZORNestNestingInputPackaging::GetWidth() const
{
    return d->width;
}

double ZORNestNestingInputPackaging::GetLength() const
{
    return d->length;
}

void ZORNestNestingInputPackaging::SetQuantity(int quantity)
{
    ZOR_TRACE_CALL(quantity);
    d->quantity = quantity;
}

int ZORNestNestingInputPackaging::GetQuantity() const
{
    return d->quantity;
}

void ZORNestNestingInputPackaging::SetLeftTrim(double width)
{
    ZOR_TRACE_CALL(width);
    d->leftTrim = width;
}

double ZORNestNestingInputPackaging::GetLeftTrim() const
{
    return d->leftTrim;
}

void ZORNestNestingInputPackaging::SetRightTrim(double width)
{
    ZOR_TRACE_CALL(width);
    d->rightTrim = width;
}

double ZORNestNestingInputPackaging::GetRightTrim() const
{
    return d->rightTrim;
}

void ZORNestNestingInputPackaging::SetTopTrim(double width)
{
    ZOR_TRACE_CALL(width);
    d->topTrim = width;
}

double ZORNestNestingInputPackaging::GetTopTrim() const
{
    return d->topTrim;
}

void ZORNestNestingInputPackaging::SetBottomTrim(double width)
{
    ZOR_TRACE_CALL(width);
    d->bottomTrim = width;
}

double ZORNestNestingInputPackaging::GetBottomTrim() const
{
    return d->bottomTrim;
}

void ZORNestNestingInputPackaging::SetCost(double cost)
{
    ZOR_TRACE_CALL(cost);
    d->cost = cost;
}

double ZORNestNestingInputPackaging::GetCost() const
{
    return d->cost;
}

void ZorTraceAppend(QByteArray& out, const ZORNestNestingInputPackaging& packaging)
{
    out += '(';
    ZorTraceAppend(out, packaging.d->name);
    out += ", ";
    ZorTraceAppend(out, packaging.d->width);
    out += ", ";
    ZorTraceAppend(out, packaging.d->length);
    out += ", ";
    ZorTraceAppend(out, packaging.d->quantity);
    out += ')';
}
