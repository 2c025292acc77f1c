#include "ZORVisOverlay_p.h"
#include "scene/ZORVisLineData_p.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double kMarkerMargin = 8;       // device independent pixels from a point to the end of its symbol
constexpr double kSmallestText = 2;       // device pixels; smaller ones cannot be read
constexpr int kFontSize = 64;             // at which texts are laid out before they are scaled
constexpr int kLargestPart = 16384;       // QPainter's own limit is 32767
constexpr double kTriadLength = 34;       // device independent pixels, as are the next two
constexpr double kTriadMargin = 52;       // from the corner of the picture to the origin of the axes
constexpr double kSmallestForTriad = 120; // pictures that are smaller have none

QFont CreateFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(kFontSize);
    return font;
}

// Parts of a picture that QPainter can address.
QList<QRect> PartsOf(const QSize& size)
{
    QList<QRect> parts;
    for (int y = 0; y < size.height(); y += kLargestPart) {
        for (int x = 0; x < size.width(); x += kLargestPart)
            parts << QRect(x, y, kLargestPart, kLargestPart).intersected(QRect(QPoint(0, 0), size));
    }
    return parts;
}

// Where a text box of that size begins, right of and below the anchored point.
QPointF AnchorOffset(ZORVisTextPrimitive::AnchorLocation anchor, const QSizeF& box)
{
    const int code = anchor < 0 || anchor > ZORVisTextPrimitive::UpperRight ? 0 : int(anchor);
    const int column = code % 3; // 0 left, 2 right
    const int row = code / 3;    // 0 lower, 2 upper
    return {-column / 2.0 * box.width(), -(2 - row) / 2.0 * box.height()};
}

} // namespace

ZORVisOverlay::ZORVisOverlay(const ZORVisFrame& frame, const ZORVisDrawList& objects, ZORVisMarkers* markers)
    : m_frame(frame)
    , m_markers(markers)
{
    for (const ZORVisDrawObject* object : objects) {
        for (const auto& item : object->items)
            Collect(*item);
    }
    // Near ones over far ones, texts over symbols; the order of the objects decides among equals.
    std::stable_sort(m_elements.begin(), m_elements.end(), [](const Element& a, const Element& b) {
        return !a.text != !b.text ? !a.text : a.depth > b.depth;
    });
}

void ZORVisOverlay::Collect(const ZORVisRepItem& item)
{
    ZORVisForEach<ZORVisPointData, ZORVisPrimitiveKind::Points>(item, [&](const ZORVisPointData& data) {
        for (const ZORMathPoint& point : data.points)
            AddElement(point, kMarkerMargin * m_frame.ratio, item.options, nullptr);
    });
    if (!qGuiApp) // no fonts
        return;
    ZORVisForEach<ZORVisTextData, ZORVisPrimitiveKind::Text>(item, [&](const ZORVisTextData& text) {
        const double height = GetTextHeight(item.options, text);
        if (height >= kSmallestText)
            AddElement(text.position, 2 * height * double(text.text.size() + 1), item.options, &text);
    });
}

void ZORVisOverlay::AddElement(const ZORMathPoint& point, double margin, const ZORVisOptions& options,
                               const ZORVisTextData* text)
{
    if (!point.IsFinite())
        return;
    const QPointF pixel = m_frame.ToPixel(point);
    if (QRectF(QPointF(0, 0), m_frame.size).adjusted(-margin, -margin, margin, margin).contains(pixel))
        m_elements.push_back({pixel, m_frame.ToDepth(point), true, &options, text});
}

// Of the font, in device pixels.
double ZORVisOverlay::GetTextHeight(const ZORVisOptions& options, const ZORVisTextData& text) const
{
    const double size = options.GetDrawnTextSize();
    return text.scalability == ZORVisTextPrimitive::Scalable ? size / m_frame.pixelSize
                                                             : size * m_frame.ratio;
}

void ZORVisOverlay::Hide(const QRect& tile, const std::vector<float>& depth)
{
    for (Element& element : m_elements) {
        const int column = int(std::floor(element.pixel.x())) - tile.x();
        const int row = int(std::floor(element.pixel.y())) - tile.y();
        if (column < 0 || row < 0 || column >= tile.width() || row >= tile.height())
            continue;
        // A point on a slanting surface is seen if any of the pixels around it is not in front of it.
        float farthest = 0;
        for (int y = std::max(0, row - 1); y <= std::min(tile.height() - 1, row + 1); ++y) {
            for (int x = std::max(0, column - 1); x <= std::min(tile.width() - 1, column + 1); ++x)
                farthest = std::max(farthest, depth[size_t(y) * size_t(tile.width()) + size_t(x)]);
        }
        element.visible = element.depth <= double(farthest) + ZORVisFrame::kDepthTolerance;
    }
}

void ZORVisOverlay::Paint(QImage& picture)
{
    if (m_elements.empty() && !m_frame.triad)
        return;
    const QList<QRect> parts = PartsOf(picture.size());
    for (const QRect& part : parts) {
        QImage view(picture.scanLine(part.y()) + 4 * qsizetype(part.x()), part.width(), part.height(),
                    picture.bytesPerLine(), picture.format());
        QPainter painter(&view);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.translate(-part.topLeft());
        PaintElements(painter, part);
        if (m_frame.triad)
            PaintTriad(painter);
    }
}

void ZORVisOverlay::PaintElements(QPainter& painter, const QRect& part)
{
    const ZORVisOptions* options = nullptr;
    QImage symbol;
    for (const Element& element : m_elements) {
        if (!element.visible)
            continue;
        if (element.text) {
            PaintText(painter, element);
            continue;
        }
        if (element.options != options) {
            options = element.options;
            symbol = m_markers->GetImage(options->GetPointSymbol(), options->GetDrawnColor(), m_frame.ratio);
        }
        const QPoint middle(int(std::floor(element.pixel.x())), int(std::floor(element.pixel.y())));
        const QPoint corner = middle - QPoint(symbol.width() / 2, symbol.height() / 2);
        if (QRect(corner, symbol.size()).intersects(part))
            painter.drawImage(corner, symbol);
    }
}

void ZORVisOverlay::PaintText(QPainter& painter, const Element& element) const
{
    // A font keeps an engine for the thread that draws with it, so threads cannot share one.
    thread_local const QFont font = CreateFont();
    const QFontMetricsF metrics(font);
    const QStringList lines = element.text->text.split(QLatin1Char('\n'));
    double width = 0;
    for (const QString& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    const QPointF offset =
        AnchorOffset(element.text->anchor, {width, metrics.height() * double(lines.size())});
    const double scale = GetTextHeight(*element.options, *element.text) / kFontSize;

    painter.save();
    painter.translate(element.pixel);
    painter.scale(scale, scale);
    painter.setFont(font);
    painter.setPen(element.options->GetDrawnColor());
    double baseline = offset.y() + metrics.ascent();
    for (const QString& line : lines) {
        painter.drawText(QPointF(offset.x(), baseline), line);
        baseline += metrics.height();
    }
    painter.restore();
}

void ZORVisOverlay::PaintTriad(QPainter& painter) const
{
    struct Axis
    {
        QPointF tip;
        double depth;
        QColor color;
        const char* name;
    };
    const double ratio = m_frame.ratio;
    if (std::min(m_frame.size.width(), m_frame.size.height()) < kSmallestForTriad * ratio)
        return;
    const auto axis = [this](const ZORMathVector& v, const QColor& color, const char* name) {
        return Axis{{Dot(v, m_frame.right), -Dot(v, m_frame.up)}, Dot(v, m_frame.direction), color, name};
    };
    std::array<Axis, 3> axes = {axis({1, 0, 0}, QColor(225, 60, 55), "X"),
                                axis({0, 1, 0}, QColor(40, 165, 70), "Y"),
                                axis({0, 0, 1}, QColor(70, 120, 245), "Z")};
    std::stable_sort(axes.begin(), axes.end(),
                     [](const Axis& a, const Axis& b) { return a.depth > b.depth; });

    painter.save();
    painter.translate(kTriadMargin * ratio, m_frame.size.height() - kTriadMargin * ratio);
    painter.scale(ratio, ratio);
    QFont font = CreateFont();
    font.setPixelSize(12);
    font.setBold(true);
    for (const Axis& each : axes) {
        painter.setPen(QPen(each.color, 2.4, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, 0), each.tip * kTriadLength);
        const double length = std::hypot(each.tip.x(), each.tip.y());
        if (length > 0.25) { // an axis along the view has no arrow head
            const QPointF along = each.tip / length;
            const QPointF across(-along.y(), along.x());
            const QPointF tip = each.tip * kTriadLength;
            painter.setPen(Qt::NoPen);
            painter.setBrush(each.color);
            painter.drawPolygon(
                QPolygonF{tip + 4 * along, tip - 5 * along + 4 * across, tip - 5 * along - 4 * across});
        }
        if (qGuiApp) {
            painter.setFont(font);
            painter.setPen(each.color);
            const QPointF place = length > 0.25 ? each.tip * (kTriadLength + 11 / length) : QPointF(-10, 10);
            painter.drawText(QRectF(place - QPointF(10, 10), QSizeF(20, 20)), Qt::AlignCenter,
                             QString::fromLatin1(each.name));
        }
    }
    painter.restore();
}
