#include "ZORNestHtml_p.h"
#include "ZORNestReportWriter_p.h"
#include "ZORNestSheetPicture_p.h"
#include "solver/base/ZORNestSolverBudget.h"

#include <QBuffer>

#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <set>

namespace {

using ZORNestHtml::Area;
using ZORNestHtml::Bar;
using ZORNestHtml::ChooseAreaUnit;
using ZORNestHtml::ChooseLengthUnit;
using ZORNestHtml::Facts;
using ZORNestHtml::Heading;
using ZORNestHtml::kBadColor;
using ZORNestHtml::kGoodColor;
using ZORNestHtml::kPageWidth;
using ZORNestHtml::kQuietColor;
using ZORNestHtml::Length;
using ZORNestHtml::LongLength;
using ZORNestHtml::Paragraph;
using ZORNestHtml::Percent;
using ZORNestHtml::Plain;
using ZORNestHtml::Table;
using ZORNestHtml::Time;
using ZORNestSolver::Box;
using ZORNestSolver::Item;
using ZORNestSolver::Job;
using ZORNestSolver::NestedSheet;
using ZORNestSolver::Placement;
using ZORNestSolver::Polygon;
using ZORNestSolver::SheetKind;
using ZORNestSolver::Solution;
using ZORNestSolver::Transform;
using ZORNestSolver::UnplacedItem;

constexpr int kPixelRatio = 2;            // pictures are crisp on screens of high density
constexpr int kPngQuality = 80;           // fast, and hardly larger than the best
constexpr size_t kMostAngles = 4;         // in a list
constexpr double kNarrowestRemnant = 10;  // mm that are worth keeping
constexpr char kLabelColor[] = "#1d2630"; // on the light colours of the parts

QString Escape(const std::string& text)
{
    return QString::fromStdString(text).toHtmlEscaped();
}

double Share(double part, double whole)
{
    return whole > 0 ? part / whole : 0;
}

QString NumberCell(size_t item)
{
    return QStringLiteral("<td width=\"32\" align=\"center\" bgcolor=\"%1\" style=\"color:%2; "
                          "font-weight:600;\">%3</td>")
        .arg(ZORNestSheetPicture::GetColor(item).name(), QLatin1String(kLabelColor),
             QString::number(item + 1));
}

/// The polygon around a part. Once polygons have taken long, the hull has to do: whoever stops a job waits for its report.
Polygon MakePolygon(const Item& item, double start)
{
    const auto isLate = [start] {
        return ZORNestSolver::GetThreadTime() - start > ZORNestSolver::kMostMeasuring;
    };
    std::string reason;
    const Polygon polygon = MakeOuterPolygon(item.contours, reason, isLate);
    return polygon.empty() && isLate() ? MakeOuterHull(item.contours, reason) : polygon;
}

/// The copies of a part on a sheet.
struct Copies
{
    int count = 0;
    int mirrored = 0;
    std::set<double> degrees;
};

QString Angles(const std::set<double>& degrees)
{
    QStringList texts;
    for (const double angle : degrees) {
        if (size_t(texts.size()) == kMostAngles)
            return texts.join(QStringLiteral(", ")) + QStringLiteral(" …");
        texts.append(Plain(angle, 2) + u'°');
    }
    return texts.join(QStringLiteral(", "));
}

QString Hands(const Copies& copies)
{
    if (copies.mirrored == 0)
        return ZORNestReportWriter::tr("no");
    return copies.mirrored == copies.count
               ? ZORNestReportWriter::tr("yes")
               : ZORNestReportWriter::tr("%1 of %2")
                     .arg(QString::number(copies.mirrored), QString::number(copies.count));
}

} // namespace

struct ZORNestReportWriter::Totals
{
    double partArea = 0;
    double sheetArea = 0;
    double cutLength = 0; // a stack is cut once
    qint64 placed = 0;
    qint64 unplaced = 0;
    qint64 sheets = 0;
};

ZORNestReportWriter::ZORNestReportWriter(const Job& job, const Solution& solution,
                                         const ZORNestReportDetails& details)
    : m_job(job)
    , m_solution(solution)
    , m_details(details)
{
    std::vector<bool> isPlaced(job.items.size(), false);
    for (const NestedSheet& sheet : solution.sheets)
        for (const Placement& placement : sheet.placements)
            isPlaced[placement.item] = true;
    const double start = ZORNestSolver::GetThreadTime();
    for (size_t i = 0; i < job.items.size(); ++i)
        m_polygons.push_back(isPlaced[i] ? MakePolygon(job.items[i], start) : Polygon());
    m_picture = std::make_unique<ZORNestSheetPicture>(job, details.parts, m_polygons);
    // The same in all tables, which readers compare.
    double smallest = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < job.items.size(); ++i) {
        if (isPlaced[i])
            smallest = std::min(smallest, details.parts[i].area);
    }
    m_areaUnit = ChooseAreaUnit(smallest);
    m_lengthUnit = ChooseLengthUnit(GetTotals().cutLength);
}

ZORNestReportWriter::~ZORNestReportWriter() = default;

double ZORNestReportWriter::GetPartArea(const NestedSheet& sheet) const
{
    double area = 0;
    for (const Placement& placement : sheet.placements)
        area += m_details.parts[placement.item].area;
    return area;
}

double ZORNestReportWriter::GetCutLength(const NestedSheet& sheet) const
{
    double length = 0;
    for (const Placement& placement : sheet.placements)
        length += m_details.parts[placement.item].cutLength;
    return length;
}

double ZORNestReportWriter::GetSheetArea(const NestedSheet& sheet) const
{
    return sheet.usedLength * m_job.kinds[sheet.kind].width;
}

Box ZORNestReportWriter::GetOccupied(const NestedSheet& sheet) const
{
    Box box;
    for (const Placement& placement : sheet.placements) {
        const Box placed = GetBox(Transform(placement.pose).Apply(m_polygons[placement.item]));
        box.Add(placed.min);
        box.Add(placed.max);
    }
    return box;
}

QImage ZORNestReportWriter::DrawSheet(size_t sheet, int width) const
{
    return m_picture->Draw(m_solution.sheets.at(sheet), width);
}

// What a straight cut right of the parts, or above them, leaves as a rectangle.
QString ZORNestReportWriter::WriteRemnant(const NestedSheet& sheet) const
{
    const SheetKind& kind = m_job.kinds[sheet.kind];
    if (kind.IsRoll())
        return tr("the rest of the roll");
    const Box occupied = GetOccupied(sheet);
    const double right = sheet.usedLength - occupied.max.x - m_job.separation;
    const double above = kind.width - occupied.max.y - m_job.separation;
    if (right < kNarrowestRemnant && above < kNarrowestRemnant)
        return tr("none");
    if (right * kind.width >= above * sheet.usedLength)
        return tr("%1 × %2").arg(Plain(right, 1), Length(kind.width));
    return tr("%1 × %2").arg(Plain(sheet.usedLength, 1), Length(above));
}

ZORNestReportWriter::Totals ZORNestReportWriter::GetTotals() const
{
    Totals totals;
    for (const NestedSheet& sheet : m_solution.sheets) {
        totals.partArea += GetPartArea(sheet) * sheet.stack;
        totals.sheetArea += GetSheetArea(sheet) * sheet.stack;
        totals.cutLength += GetCutLength(sheet);
        totals.placed += qint64(sheet.placements.size()) * sheet.stack;
        totals.sheets += sheet.stack;
    }
    for (const UnplacedItem& entry : m_solution.unplaced)
        totals.unplaced += entry.count;
    return totals;
}

QString ZORNestReportWriter::WriteTitle(const Totals& totals) const
{
    QStringList material;
    if (!m_details.material.isEmpty())
        material.append(m_details.material.toHtmlEscaped());
    if (m_details.thickness > 0)
        material.append(tr("%1 mm").arg(Plain(m_details.thickness, 3)));
    const qint64 all = totals.placed + totals.unplaced;
    const QString verdict = all == 0 ? tr("There is nothing to nest.")
                            : totals.unplaced == 0
                                ? tr("All parts are placed.")
                                : tr("%1 of %2 parts found no place.")
                                      .arg(QString::number(totals.unplaced), QString::number(all));
    return QStringLiteral(
               "<p style=\"font-size:20pt; font-weight:600; margin-top:0px; margin-bottom:0px;\">%1</p>")
               .arg(tr("Nesting report"))
           + (material.isEmpty() ? QString() : Paragraph(material.join(QStringLiteral(" · ")), kQuietColor))
           + Paragraph(verdict, totals.unplaced == 0 ? kGoodColor : kBadColor,
                       "font-size:12pt; font-weight:600;");
}

QString ZORNestReportWriter::WriteTotals(const Totals& totals) const
{
    const bool isFree = std::all_of(m_job.kinds.begin(), m_job.kinds.end(),
                                    [](const SheetKind& kind) { return kind.cost == 0; });
    const double share = Share(totals.partArea, totals.sheetArea);
    Facts facts;
    facts.Add(tr("Utilisation"), Percent(share));
    facts.Add(
        tr("Parts placed"),
        tr("%1 of %2").arg(QString::number(totals.placed), QString::number(totals.placed + totals.unplaced)));
    const ZORNestHtml::Unit areas = ChooseAreaUnit(std::min(totals.sheetArea, totals.partArea));
    facts.Add(tr("Material used"), Area(totals.sheetArea, areas));
    facts.Add(tr("Sheets"), QString::number(totals.sheets));
    facts.Add(tr("Area of parts"), Area(totals.partArea, areas));
    facts.Add(tr("Cut length"), LongLength(totals.cutLength, m_lengthUnit));
    facts.Add(tr("Cost"), isFree ? tr("none given") : QString::number(m_solution.cost, 'f', 2));
    facts.Add(tr("Run time"), Time(m_details.runTime));
    facts.Add(tr("Seed"), QString::number(m_job.seed));
    if (!m_details.ending.isEmpty())
        facts.Add(tr("Ended"), m_details.ending.toHtmlEscaped());
    return Bar(share) + facts.Write();
}

QString ZORNestReportWriter::WriteUnplaced() const
{
    if (m_solution.unplaced.empty())
        return {};
    Table table({tr("No."), tr("Part"), tr("Count"), tr("Reason")});
    for (const UnplacedItem& entry : m_solution.unplaced)
        table.AddRow(NumberCell(entry.item), {Escape(m_job.items[entry.item].name),
                                              QString::number(entry.count), Escape(entry.reason)});
    return Heading(tr("Not placed")) + table.Write();
}

QString ZORNestReportWriter::WriteRemarks() const
{
    QStringList remarks = m_details.remarks;
    for (const std::string& remark : m_solution.remarks)
        remarks.append(QString::fromStdString(remark));
    if (remarks.isEmpty())
        return {};
    QString html;
    for (const QString& remark : remarks)
        html += QStringLiteral("<li>%1</li>").arg(remark.toHtmlEscaped());
    return Heading(tr("Remarks")) + QStringLiteral("<ul style=\"margin-top:0px;\">%1</ul>").arg(html);
}

QString ZORNestReportWriter::WriteParts(size_t index) const
{
    std::map<size_t, Copies> parts;
    for (const Placement& placement : m_solution.sheets[index].placements) {
        Copies& copies = parts[placement.item];
        ++copies.count;
        copies.mirrored += placement.pose.mirrored ? 1 : 0;
        const double degrees = ZORNestSolver::NormalizeAngle(placement.pose.angle) * 180 / std::numbers::pi;
        copies.degrees.insert(std::fmod(std::round(degrees * 100) / 100, 360));
    }
    Table table({tr("No."), tr("Part"), tr("Count"), tr("Mirrored"), tr("Turned by"), tr("Area")});
    for (const auto& [item, copies] : parts)
        table.AddRow(NumberCell(item),
                     {Escape(m_job.items[item].name), QString::number(copies.count), Hands(copies),
                      Angles(copies.degrees), Area(m_details.parts[item].area, m_areaUnit)});
    return table.Write();
}

QString ZORNestReportWriter::WriteSheetFacts(size_t index) const
{
    const NestedSheet& sheet = m_solution.sheets[index];
    const SheetKind& kind = m_job.kinds[sheet.kind];
    const double share = Share(GetPartArea(sheet), GetSheetArea(sheet));
    Facts facts;
    facts.Add(tr("Utilisation"), Percent(share));
    facts.Add(tr("Parts"), QString::number(sheet.placements.size()));
    if (kind.IsRoll()) {
        facts.Add(tr("Roll width"), Length(kind.width));
        facts.Add(tr("Used length"), Length(sheet.usedLength));
    } else {
        facts.Add(tr("Size"), tr("%1 × %2").arg(Plain(kind.length, 1), Length(kind.width)));
        facts.Add(tr("Used length"), Length(GetOccupied(sheet).max.x));
    }
    facts.Add(tr("Remnant"), WriteRemnant(sheet));
    facts.Add(tr("Cut length"), LongLength(GetCutLength(sheet), m_lengthUnit));
    if (sheet.stack > 1)
        facts.Add(tr("Stack"), tr("%1 sheets at once").arg(sheet.stack));
    return Bar(share) + facts.Write();
}

QString ZORNestReportWriter::WritePicture(size_t index) const
{
    const QImage picture = DrawSheet(index, kPageWidth * kPixelRatio);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG", kPngQuality);
    return QStringLiteral("<p style=\"margin-top:6px; margin-bottom:6px;\"><img width=\"%1\" height=\"%2\" "
                          "src=\"data:image/png;base64,%3\"></p>")
        .arg(QString::number(picture.width() / kPixelRatio), QString::number(picture.height() / kPixelRatio),
             QString::fromLatin1(png.toBase64()));
}

// Numbered as in lists of the sheet files, from 0.
QString ZORNestReportWriter::WriteSheet(size_t index) const
{
    const SheetKind& kind = m_job.kinds[m_solution.sheets[index].kind];
    return Heading(tr("Sheet %1: %2").arg(QString::number(index), Escape(kind.name))) + WriteSheetFacts(index)
           + WritePicture(index) + WriteParts(index);
}

QByteArray ZORNestReportWriter::Write() const
{
    QString html = QStringLiteral("<html><head><meta charset=\"utf-8\"><title>%1</title></head><body>")
                       .arg(tr("Nesting report"));
    const Totals totals = GetTotals();
    html += WriteTitle(totals);
    if (totals.sheets > 0)
        html += WriteTotals(totals);
    html += WriteUnplaced() + WriteRemarks();
    for (size_t i = 0; i < m_solution.sheets.size(); ++i)
        html += WriteSheet(i);
    return (html + QStringLiteral("</body></html>\n")).toUtf8();
}
