#include "ZORNestNestingJob_p.h"
#include "ZORNestPlacedItem_p.h"
#include "formats/ZORNestResultDocument_p.h"
#include "solver/base/ZORNestSolverBudget.h"

#include <ZORNesting/ZORNestNestingInput.h>
#include <ZORNesting/ZORNestResult.h>

#include <cmath>
#include <optional>

namespace {

constexpr double kMostReading = 1; // seconds of processor time after the end of the job

ZORNestSolver::UsageRule ToUsageRule(ZORNestBaseFeature::PackagingUsageRule rule)
{
    switch (rule) {
    case ZORNestBaseFeature::BestMix:
        return ZORNestSolver::UsageRule::BestMix;
    case ZORNestBaseFeature::BestSize:
        return ZORNestSolver::UsageRule::BestSize;
    case ZORNestBaseFeature::AsListed:
        break;
    }
    return ZORNestSolver::UsageRule::AsListed;
}

ZORNestNestingPart MakeUnread(const QString& name)
{
    ZORNestNestingPart part;
    part.item = ZORNestResultItem(name);
    part.failure = ZORNestNestingJob::tr("no time left");
    return part;
}

} // namespace

ZORNestNestingJob::ZORNestNestingJob(const ZORNestNestingInput& input,
                                     const std::function<bool()>& isCanceled,
                                     const std::function<bool()>& isOver)
{
    std::optional<double> end; // when the job was over
    for (qsizetype i = 0; i < input.GetItems().size() && !isCanceled(); ++i) {
        if (!end && isOver())
            end = ZORNestSolver::GetThreadTime();
        AddItem(input, i, !end || ZORNestSolver::GetThreadTime() - *end < kMostReading);
    }
    for (qsizetype i = 0; i < input.GetPackagings().size(); ++i)
        AddKind(input, i);
    m_job.separation = GetNumber(input.GetItemSeparation(), tr("item separation"));
    m_job.frameWidth = GetNumber(input.GetFrameWidth(), tr("frame width"));
    m_job.maxDeviation = GetNumber(input.GetMaxDeviation(), tr("maximum deviation"));
    m_job.deviationIncrement = GetNumber(input.GetDeviationIncrement(), tr("deviation increment"));
    m_job.grain90 = input.IsGrain90Set();
    m_job.grain180 = input.IsGrain180Set();
    m_job.grain270 = input.IsGrain270Set();
    m_job.singleSided = input.IsSingleSidedMaterial();
    m_job.stackSize = std::max(1, input.GetStackSize());
    m_job.usageRule = ToUsageRule(input.GetPackagingUsageRule());
    m_job.seed = input.GetSeed();
}

/// \return 0 for a number that cannot be used, with a remark
double ZORNestNestingJob::GetNumber(double value, const QString& meaning)
{
    if (value >= 0 && std::isfinite(value))
        return value;
    m_remarks.append(tr("%1 counts as 0 instead of %2").arg(meaning, QString::number(value)));
    return 0;
}

void ZORNestNestingJob::AddItem(const ZORNestNestingInput& input, qsizetype index, bool isRead)
{
    const ZORNestNestingInputItem source = input.GetItems().at(index);
    const QList<ZORNestNestingPart> parts = isRead ? ZORNestReadParts(source.GetName(), source.GetContents())
                                                   : QList<ZORNestNestingPart>{MakeUnread(source.GetName())};
    ZORNestSolver::Item item;
    if (source.GetQuantity() < 0)
        m_remarks.append(tr("part '%1': quantity %2 counts as 0")
                             .arg(source.GetName(), QString::number(source.GetQuantity())));
    item.quantity = std::max(0, source.GetQuantity());
    item.priority = source.GetPriority();
    item.orientation = source.GetOrientation();
    if (!std::isfinite(item.orientation)) {
        m_remarks.append(tr("part '%1': orientation counts as 0 instead of %2")
                             .arg(source.GetName(), QString::number(item.orientation)));
        item.orientation = 0;
    }
    item.grain90 = source.IsGrain90Set();
    item.grain180 = source.IsGrain180Set();
    item.grain270 = source.IsGrain270Set();
    item.maxDeviation =
        GetNumber(source.GetMaxDeviation(), tr("part '%1': maximum deviation").arg(source.GetName()));
    item.deviationIncrement = source.GetDeviationIncrement();
    item.mirrored = source.IsMirrored();
    item.flippable = source.IsFlippable();
    for (const ZORNestNestingPart& part : parts) {
        const QString name = parts.size() == 1
                                 ? source.GetName()
                                 : source.GetName() + QStringLiteral(" / ") + part.item.GetName();
        if (item.quantity == 0 && !part.failure.isEmpty())
            m_remarks.append(tr("part '%1': %2").arg(name, part.failure));
        if (!part.remark.isEmpty())
            m_remarks.append(tr("part '%1' %2").arg(name, part.remark));
        item.name = name.toStdString();
        item.contours = part.contours;
        m_job.items.push_back(item);
        m_parts.append(part);
    }
}

void ZORNestNestingJob::AddKind(const ZORNestNestingInput& input, qsizetype index)
{
    const ZORNestNestingInputPackaging source = input.GetPackagings().at(index);
    const auto getNumber = [&](double value, const QString& meaning) {
        return GetNumber(value, tr("sheet '%1': %2").arg(source.GetName(), meaning));
    };
    if (source.GetQuantity() < 0) {
        m_remarks.append(tr("sheet '%1': quantity %2 counts as 0")
                             .arg(source.GetName(), QString::number(source.GetQuantity())));
    }
    ZORNestSolver::SheetKind kind;
    kind.name = source.GetName().toStdString();
    kind.quantity = std::max(0, source.GetQuantity());
    kind.width = getNumber(source.GetWidth(), tr("width"));
    kind.length =
        std::isnan(source.GetLength()) ? source.GetLength() : getNumber(source.GetLength(), tr("length"));
    kind.leftTrim = getNumber(source.GetLeftTrim(), tr("left trim"));
    kind.rightTrim = getNumber(source.GetRightTrim(), tr("right trim"));
    kind.topTrim = getNumber(source.GetTopTrim(), tr("top trim"));
    kind.bottomTrim = getNumber(source.GetBottomTrim(), tr("bottom trim"));
    kind.cost = getNumber(source.GetCost(), tr("cost"));
    m_job.kinds.push_back(kind);
}

void ZORNestNestingJob::Complete(ZORNestSolver::Solution& solution) const
{
    std::vector<ZORNestSolver::UnplacedItem> unplaced = std::move(solution.unplaced);
    for (ZORNestSolver::UnplacedItem& entry : unplaced) {
        const QString& failure = m_parts[qsizetype(entry.item)].failure;
        if (!failure.isEmpty())
            entry.reason = failure.toStdString();
    }
    std::stable_sort(unplaced.begin(), unplaced.end(),
                     [](const auto& a, const auto& b) { return a.item < b.item; });
    solution.unplaced = std::move(unplaced);
}

QByteArray ZORNestNestingJob::WriteSheet(const ZORNestSolver::NestedSheet& sheet) const
{
    ZORNestResult result(ZORNestResult::Nesting);
    ZORMathBoundingBox box;
    box.Add(ZORMathPoint(0, 0, 0));
    box.Add(ZORMathPoint(sheet.usedLength, m_job.kinds[sheet.kind].width, 0));
    result.SetSheet(box);
    result.SetStackSize(sheet.stack);
    for (const ZORNestSolver::Placement& placement : sheet.placements) {
        const QString name = QString::fromStdString(m_job.items[placement.item].name);
        result.AddItem(ZORNestPlaceItem(m_parts[qsizetype(placement.item)].item, name, placement.pose));
    }
    return ZORNestResultDocument::Write(result);
}
