#include "ZORNestTranslationInput.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

namespace {

double Check(double tolerance, double lowest)
{
    constexpr double highest = 1000;
    if (!(tolerance >= lowest && tolerance <= highest)) {
        throw ZORSysException(ZORNestTranslationInput::tr("tolerance has to be a number from %1 to %2")
                                  .arg(QString::number(lowest), QString::number(highest)));
    }
    return tolerance;
}

} // namespace

ZORNestTranslationInput::ZORNestTranslationInput() = default;

void ZORNestTranslationInput::SetInputFileType(FileType type)
{
    ZOR_TRACE_CALL(type);
    m_inputFileType = type;
}

void ZORNestTranslationInput::SetOutputFileType(FileType type)
{
    ZOR_TRACE_CALL(type);
    m_outputFileType = type;
}

void ZORNestTranslationInput::SetPreTranslateProvider(const QByteArray& providerId)
{
    ZOR_TRACE_CALL(providerId);
    m_providerId = providerId;
}

void ZORNestTranslationInput::SetJoinTolerance(double tolerance)
{
    ZOR_TRACE_CALL(tolerance);
    m_joinTolerance = Check(tolerance, 0);
}

void ZORNestTranslationInput::SetCurveTolerance(double tolerance)
{
    ZOR_TRACE_CALL(tolerance);
    m_curveTolerance = Check(tolerance, 1e-6);
}

void ZorTraceAppend(QByteArray& out, const ZORNestTranslationInput& input)
{
    out += '(';
    ZorTraceAppend(out, input.m_inputFileType);
    out += ", ";
    ZorTraceAppend(out, input.m_outputFileType);
    out += ", ";
    ZorTraceAppend(out, QString::fromUtf8(input.m_providerId));
    out += ')';
}
