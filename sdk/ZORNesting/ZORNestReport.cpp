#include "ZORNestReport.h"

#include "job/ZORNestLayout_p.h"
#include "report/ZORNestReportWriter_p.h"

#include <ZORNesting/ZORNestLayout.h>
#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestReport::Private
{
public:
    explicit Private(const ZORNestLayout& reported)
        : layout(reported)
        , details(MakeDetails(GetJob()))
        , writer(GetJob(), layout.GetData().solution, details)
    {
    }
    static ZORNestReportDetails MakeDetails(const ZORNestSolver::Job& job)
    {
        ZORNestReportDetails details;
        details.parts = ZORNestMeasureParts(job);
        return details;
    }
    const ZORNestSolver::Job& GetJob() const { return layout.GetData().instance.GetData().job; }

    const ZORNestLayout layout;
    ZORNestReportDetails details;
    const ZORNestReportWriter writer; // last: it uses the rest
};

ZORNestReport::ZORNestReport(const ZORNestLayout& layout)
    : d(std::make_unique<Private>(layout))
{
    ZOR_TRACE_CALL(layout);
}

ZORNestReport::~ZORNestReport() = default;

void ZORNestReport::SetMaterial(const QString& name, double thickness)
{
    ZOR_TRACE_CALL(name, thickness);
    d->details.material = name;
    d->details.thickness = thickness;
}

void ZORNestReport::SetRunTime(double seconds)
{
    ZOR_TRACE_CALL(seconds);
    d->details.runTime = seconds;
}

void ZORNestReport::SetEnding(const QString& ending)
{
    ZOR_TRACE_CALL(ending);
    d->details.ending = ending;
}

void ZORNestReport::SetRemarks(const QStringList& remarks)
{
    ZOR_TRACE_CALL(remarks);
    d->details.remarks = remarks;
}

QByteArray ZORNestReport::Write() const
{
    return d->writer.Write();
}

QImage ZORNestReport::DrawSheet(qsizetype sheet, int width) const
{
    return d->writer.DrawSheet(size_t(sheet), width);
}
