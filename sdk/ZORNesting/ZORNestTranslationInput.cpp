#include "ZORNestTranslationInput.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

namespace {

double Check(double tolerance, double lowest)
{
    constexpr double kHighest = 1000;
    if (!(tolerance >= lowest && tolerance <= kHighest)) {
        throw ZORSysException(ZORNestTranslationInput::tr("tolerance has to be a number from %1 to %2")
                                  .arg(QString::number(lowest), QString::number(kHighest)));
    }
    return tolerance;
}

} // namespace

class ZORNestTranslationInputData : public QSharedData
{
public:
    ZORNestTranslationInput::FileType inputFileType = ZORNestTranslationInput::ProviderSource;
    ZORNestTranslationInput::FileType outputFileType = ZORNestTranslationInput::PartFile;
    QByteArray providerId;
    double joinTolerance = 0.01;
    double curveTolerance = 0.01;
};

ZORNestTranslationInput::ZORNestTranslationInput()
    : d(new ZORNestTranslationInputData)
{
}

ZORNestTranslationInput::ZORNestTranslationInput(const ZORNestTranslationInput& other) = default;
ZORNestTranslationInput::ZORNestTranslationInput(ZORNestTranslationInput&& other) noexcept = default;
ZORNestTranslationInput& ZORNestTranslationInput::operator=(const ZORNestTranslationInput& other) = default;
ZORNestTranslationInput&
ZORNestTranslationInput::operator=(ZORNestTranslationInput&& other) noexcept = default;
ZORNestTranslationInput::~ZORNestTranslationInput() = default;

void ZORNestTranslationInput::SetInputFileType(FileType type)
{
    ZOR_TRACE_CALL(type);
    d->inputFileType = type;
}

ZORNestTranslationInput::FileType ZORNestTranslationInput::GetInputFileType() const
{
    return d->inputFileType;
}

void ZORNestTranslationInput::SetOutputFileType(FileType type)
{
    ZOR_TRACE_CALL(type);
    d->outputFileType = type;
}

ZORNestTranslationInput::FileType ZORNestTranslationInput::GetOutputFileType() const
{
    return d->outputFileType;
}

void ZORNestTranslationInput::SetPreTranslateProvider(const QByteArray& providerId)
{
    ZOR_TRACE_CALL(providerId);
    d->providerId = providerId;
}

QByteArray ZORNestTranslationInput::GetPreTranslateProvider() const
{
    return d->providerId;
}

void ZORNestTranslationInput::SetJoinTolerance(double tolerance)
{
    ZOR_TRACE_CALL(tolerance);
    d->joinTolerance = Check(tolerance, 0);
}

double ZORNestTranslationInput::GetJoinTolerance() const
{
    return d->joinTolerance;
}

void ZORNestTranslationInput::SetCurveTolerance(double tolerance)
{
    ZOR_TRACE_CALL(tolerance);
    d->curveTolerance = Check(tolerance, 1e-6);
}

double ZORNestTranslationInput::GetCurveTolerance() const
{
    return d->curveTolerance;
}

void ZorTraceAppend(QByteArray& out, const ZORNestTranslationInput& input)
{
    out += '(';
    ZorTraceAppend(out, input.d->inputFileType);
    out += ", ";
    ZorTraceAppend(out, input.d->outputFileType);
    out += ", ";
    ZorTraceAppend(out, QString::fromUtf8(input.d->providerId));
    out += ')';
}
