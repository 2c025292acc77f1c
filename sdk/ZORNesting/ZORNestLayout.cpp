#include "ZORNestLayout.h"

#include "job/ZORNestLayout_p.h"
#include "solver/base/ZORNestSolverAngle.h"
#include "solver/base/ZORNestSolverBudget.h"
#include "solver/proof/ZORNestSolverCheck.h"

#include <ZORSystem/ZORSysTraceArguments.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using ZORNestSolver::Item;
using ZORNestSolver::Job;
using ZORNestSolver::kDegree;
using ZORNestSolver::NestedSheet;
using ZORNestSolver::Placement;
using ZORNestSolver::SheetKind;
using ZORNestSolver::UnplacedItem;

namespace {

/// The areas of parts, each measured once, when it is needed first. Once that has taken a while, the rest is not measured.
class PartAreas
{
public:
    explicit PartAreas(const Job& job)
        : m_job(job)
        , m_areas(job.items.size())
        , m_start(ZORNestSolver::GetThreadTime())
    {
    }
    /// Of all parts on a sheet; nothing where one is not measured.
    std::optional<double> GetSum(const NestedSheet& sheet)
    {
        double sum = 0;
        for (const Placement& placement : sheet.placements) {
            std::optional<double>& area = m_areas[placement.item];
            if (!area && !IsLate())
                area = Measure(m_job.items[placement.item]);
            if (!area)
                return {};
            sum += *area;
        }
        return sum;
    }

private:
    bool IsLate() const { return ZORNestSolver::GetThreadTime() - m_start > ZORNestSolver::kMostMeasuring; }
    std::optional<double> Measure(const Item& item) const
    {
        std::string reason;
        const double area = GetArea(MakeOuterPolygon(item.contours, reason, [this] { return IsLate(); }));
        return IsLate() ? std::nullopt : std::optional(area);
    }

    const Job& m_job;
    std::vector<std::optional<double>> m_areas;
    const double m_start;
};

QJsonArray WritePlacements(const ZORNestInstance& instance, const NestedSheet& sheet)
{
    QJsonArray placements;
    for (const Placement& placement : sheet.placements)
        placements.append(QJsonObject{{"item", instance.GetItemId(qsizetype(placement.item))},
                                      {"mirror", placement.pose.mirrored},
                                      {"rotation_deg", placement.pose.angle / kDegree},
                                      {"x", placement.pose.position.x},
                                      {"y", placement.pose.position.y}});
    return placements;
}

} // namespace

ZORNestLayout::ZORNestLayout()
    : d(new ZORNestLayoutData)
{
}

ZORNestLayout::ZORNestLayout(ZORNestLayoutData* data)
    : d(data)
{
}

ZORNestLayout::ZORNestLayout(const ZORNestLayout& other) = default;
ZORNestLayout::ZORNestLayout(ZORNestLayout&& other) noexcept = default;
ZORNestLayout& ZORNestLayout::operator=(const ZORNestLayout& other) = default;
ZORNestLayout& ZORNestLayout::operator=(ZORNestLayout&& other) noexcept = default;
ZORNestLayout::~ZORNestLayout() = default;

ZORNestInstance ZORNestLayout::GetInstance() const
{
    return d->instance;
}

qsizetype ZORNestLayout::GetNumSheets() const
{
    return qsizetype(d->solution.sheets.size());
}

qsizetype ZORNestLayout::GetPackaging(qsizetype sheet) const
{
    return qsizetype(d->solution.sheets[size_t(sheet)].kind);
}

qsizetype ZORNestLayout::GetNumParts(qsizetype sheet) const
{
    return qsizetype(d->solution.sheets[size_t(sheet)].placements.size());
}

double ZORNestLayout::GetUsedLength(qsizetype sheet) const
{
    return d->solution.sheets[size_t(sheet)].usedLength;
}

int ZORNestLayout::GetStack(qsizetype sheet) const
{
    return d->solution.sheets[size_t(sheet)].stack;
}

std::optional<double> ZORNestLayout::GetRemnantLength(qsizetype sheet) const
{
    const NestedSheet& nested = d->solution.sheets[size_t(sheet)];
    const SheetKind& kind = d->instance.GetData().job.kinds[nested.kind];
    return kind.IsRoll() ? std::nullopt : std::optional(nested.remnantLength);
}

QList<std::optional<double>> ZORNestLayout::MeasureDensities() const
{
    const Job& job = d->instance.GetData().job;
    PartAreas areas(job);
    QList<std::optional<double>> densities;
    for (const NestedSheet& sheet : d->solution.sheets) {
        const SheetKind& kind = job.kinds[sheet.kind];
        const double sheetArea = kind.outline.empty() ? kind.width * sheet.usedLength : GetArea(kind.outline);
        const std::optional<double> partArea = areas.GetSum(sheet);
        densities.append(partArea ? std::optional(100 * *partArea / sheetArea) : std::nullopt);
    }
    return densities;
}

qsizetype ZORNestLayout::GetNumUnplaced() const
{
    return qsizetype(d->solution.unplaced.size());
}

qsizetype ZORNestLayout::GetUnplacedItem(qsizetype index) const
{
    return qsizetype(d->solution.unplaced[size_t(index)].item);
}

int ZORNestLayout::GetUnplacedCount(qsizetype index) const
{
    return d->solution.unplaced[size_t(index)].count;
}

QString ZORNestLayout::GetUnplacedReason(qsizetype index) const
{
    return QString::fromStdString(d->solution.unplaced[size_t(index)].reason);
}

QStringList ZORNestLayout::GetRemarks() const
{
    QStringList remarks;
    for (const std::string& remark : d->solution.remarks)
        remarks.append(QString::fromStdString(remark));
    return remarks;
}

double ZORNestLayout::GetCost() const
{
    return d->solution.cost;
}

QStringList ZORNestLayout::FindFaults() const
{
    QStringList faults;
    for (const std::string& fault : ZORNestSolver::FindFaults(d->instance.GetData().job, d->solution))
        faults.append(QString::fromStdString(fault));
    return faults;
}

QByteArray ZORNestLayout::WriteJson() const
{
    const ZORNestInstance& instance = d->instance;
    QJsonArray sheets;
    for (const NestedSheet& sheet : d->solution.sheets) {
        QJsonObject object{{"packaging", instance.GetPackagingId(qsizetype(sheet.kind))},
                           {"stack", sheet.stack},
                           {"placements", WritePlacements(instance, sheet)}};
        if (instance.GetData().job.kinds[sheet.kind].IsRoll())
            object.insert("length", sheet.usedLength);
        sheets.append(object);
    }
    QJsonArray unplaced;
    for (const UnplacedItem& item : d->solution.unplaced)
        unplaced.append(QJsonObject{{"item", instance.GetItemId(qsizetype(item.item))},
                                    {"count", item.count},
                                    {"reason", QString::fromStdString(item.reason)}});
    return QJsonDocument(
               QJsonObject{
                   {"format", "nest-layout"}, {"version", 1}, {"sheets", sheets}, {"unplaced", unplaced}})
        .toJson();
}

void ZorTraceAppend(QByteArray& out, const ZORNestLayout& layout)
{
    ZorTraceAppendCount(out, layout.GetNumSheets());
}
