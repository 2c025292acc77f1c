#include "ZORNestSheetPicture_p.h"
#include "solver/geometry/ZORNestSolverPoles.h"
#include "solver/model/ZORNestSolverArc.h"

#include <QGuiApplication>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace {

using ZORNestSolver::Arc;
using ZORNestSolver::Box;
using ZORNestSolver::Circle;
using ZORNestSolver::Contour;
using ZORNestSolver::Job;
using ZORNestSolver::NestedSheet;
using ZORNestSolver::Placement;
using ZORNestSolver::Point;
using ZORNestSolver::Polygon;
using ZORNestSolver::Pose;
using ZORNestSolver::Segment;
using ZORNestSolver::SheetKind;
using ZORNestSolver::Transform;

constexpr double kWidestRow = 4; // length of a row in parts of its height; longer sheets take several
constexpr int kMostRows = 8;
constexpr double kRowGap = 12;      // pixels
constexpr double kBorder = 1.5;     // pixels around a sheet
constexpr double kLineWidth = 1.6;  // pixels around a part
constexpr double kHighestRow = 0.8; // height of a row in parts of the picture's width
const QColor kSheetColor(0xff, 0xff, 0xff);
const QColor kWasteColor(0xe9, 0xeb, 0xee);
const QColor kBorderColor(0x8a, 0x90, 0x99);
const QColor kLabelColor(0x1d, 0x26, 0x30);

/// Angles of Qt's arcs count the other way round, since its y points down.
void AppendArc(QPainterPath& path, const Arc& arc)
{
    constexpr double kDegrees = 180 / std::numbers::pi;
    if (!arc.IsChord()) {
        const Point corner = arc.center - Point{arc.radius, arc.radius};
        const QRectF square(corner.x, corner.y, 2 * arc.radius, 2 * arc.radius);
        path.arcTo(square, -arc.startAngle * kDegrees, -arc.sweep * kDegrees);
    }
    path.lineTo(arc.end.x, arc.end.y);
}

QPainterPath MakePath(const std::vector<Contour>& contours)
{
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    for (const Contour& contour : contours) {
        path.moveTo(contour.start.x, contour.start.y);
        Point from = contour.start;
        for (const Segment& segment : contour.segments) {
            if (segment.isArc)
                AppendArc(path, Arc(from, segment.end, segment.centre, segment.counterClockwise));
            else
                path.lineTo(segment.end.x, segment.end.y);
            from = segment.end;
        }
    }
    return path;
}

QTransform ToTransform(const Pose& pose)
{
    const double cosine = std::cos(pose.angle);
    const double sine = std::sin(pose.angle);
    const double hand = pose.mirrored ? -1 : 1;
    return {hand * cosine, hand * sine, -sine, cosine, pose.position.x, pose.position.y};
}

QRectF ToRect(const Box& box)
{
    return {box.min.x, box.min.y, box.GetWidth(), box.GetHeight()};
}

/// What is left of a sheet between its trims and frame, cut at the used length of a roll.
QRectF GetUsable(const Job& job, const NestedSheet& sheet)
{
    const SheetKind& kind = job.kinds[sheet.kind];
    const double right = sheet.usedLength - kind.rightTrim - job.frameWidth;
    const double top = kind.width - kind.topTrim - job.frameWidth;
    return QRectF(QPointF(kind.leftTrim + job.frameWidth, kind.bottomTrim + job.frameWidth),
                  QPointF(right, top));
}

} // namespace

ZORNestSheetPicture::ZORNestSheetPicture(const Job& job, const std::vector<ZORNestReportPart>& parts,
                                         const std::vector<Polygon>& polygons)
    : m_job(job)
    , m_labels(parts.size())
{
    for (size_t i = 0; i < parts.size(); ++i) {
        m_outlines.push_back(MakePath(parts[i].contours));
        m_bounds.push_back(m_outlines.back().controlPointRect());
        if (polygons[i].empty())
            continue;
        const Circle circle = ZORNestSolver::FindPoles(polygons[i], 1).front();
        m_labels[i] = {circle.centre, circle.radius};
    }
}

// Hues that follow each other are far apart; all are light enough for dark numbers.
QColor ZORNestSheetPicture::GetColor(size_t item)
{
    constexpr double kGoldenAngle = 137.50776405003785;
    const int hue = int(std::fmod(205 + kGoldenAngle * double(item), 360));
    return QColor::fromHsl(hue, 130, item % 2 == 0 ? 178 : 196);
}

QImage ZORNestSheetPicture::Draw(const NestedSheet& sheet, int width) const
{
    const double length = std::max(sheet.usedLength, 1e-9);
    const double breadth = std::max(m_job.kinds[sheet.kind].width, 1e-9);
    const int rows = int(std::clamp(std::ceil(length / breadth / kWidestRow), 1.0, double(kMostRows)));
    const double rowLength = length / rows;
    const double room = width - 2 * kBorder;
    const double scale = std::min(room / rowLength, kHighestRow * width / breadth);
    const double rowHeight = std::max(4.0, breadth * scale);
    QImage image(int(std::ceil(rowLength * scale + 2 * kBorder)),
                 int(std::ceil(rows * rowHeight + (rows - 1) * kRowGap + 2 * kBorder)),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int row = 0; row < rows; ++row) {
        const QRectF place(kBorder, kBorder + row * (rowHeight + kRowGap), rowLength * scale, rowHeight);
        DrawRow(painter, sheet, {{row * rowLength, 0}, {(row + 1) * rowLength, breadth}}, place);
    }
    return image;
}

void ZORNestSheetPicture::DrawRow(QPainter& painter, const NestedSheet& sheet, const Box& view,
                                  const QRectF& place) const
{
    const double scaleX = place.width() / view.GetWidth();
    const double scaleY = place.height() / view.GetHeight();
    const QTransform toPixels(scaleX, 0, 0, -scaleY, place.left() - view.min.x * scaleX, place.bottom());
    painter.save();
    painter.setClipRect(place.adjusted(-kBorder, -kBorder, kBorder, kBorder));
    painter.setPen(Qt::NoPen);
    painter.fillRect(place, kWasteColor);
    painter.fillRect(toPixels.mapRect(GetUsable(m_job, sheet).intersected(ToRect(view))), kSheetColor);
    // Of a long sheet a row shows few parts.
    const QRectF seen =
        toPixels.inverted().mapRect(place.adjusted(-kLineWidth, -kLineWidth, kLineWidth, kLineWidth));
    std::vector<Placement> visible;
    for (const Placement& placement : sheet.placements)
        if (ToTransform(placement.pose).mapRect(m_bounds[placement.item]).intersects(seen))
            visible.push_back(placement);
    for (const Placement& placement : visible)
        DrawPart(painter, placement, toPixels);
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        for (const Placement& placement : visible)
            DrawLabel(painter, placement, toPixels);
    }
    painter.setPen(QPen(kBorderColor, kBorder));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place);
    painter.restore();
}

void ZORNestSheetPicture::DrawPart(QPainter& painter, const Placement& placement,
                                   const QTransform& toPixels) const
{
    const QPainterPath outline = (ToTransform(placement.pose) * toPixels).map(m_outlines[placement.item]);
    const QColor color = GetColor(placement.item);
    painter.fillPath(outline, color);
    if (placement.pose.mirrored)
        painter.fillPath(outline, QBrush(color.darker(130), Qt::BDiagPattern));
    painter.strokePath(outline, QPen(color.darker(190), kLineWidth));
}

void ZORNestSheetPicture::DrawLabel(QPainter& painter, const Placement& placement,
                                    const QTransform& toPixels) const
{
    constexpr double kSmallest = 14; // pixels that can be read at half the size
    constexpr double kLargest = 30;
    const Label& label = m_labels[placement.item];
    const Point center = Transform(placement.pose).Apply(label.center);
    const QString text = QString::number(placement.item + 1);
    const double size =
        std::min(kLargest, 1.5 * label.radius * toPixels.m11() / std::max(1.0, 0.62 * double(text.size())));
    if (size < kSmallest)
        return;
    QFont font = QGuiApplication::font();
    font.setPixelSize(int(size));
    painter.setFont(font);
    painter.setPen(kLabelColor);
    const QPointF place = toPixels.map(QPointF(center.x, center.y));
    painter.drawText(QRectF(place - QPointF(4 * size, size), QSizeF(8 * size, 2 * size)), Qt::AlignCenter,
                     text);
}
