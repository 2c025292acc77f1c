#include "ZORVisGlScene_p.h"
#include "ZORVisOverlay_p.h"
#include "ZORVisPicture_p.h"
#include "ZORVisSoftware_p.h"

#include <ZORVisualization/ZORVisGraphicsContext.h>

#include <QList>
#include <QRect>

#include <algorithm>

namespace {

constexpr qint64 kLargestPicture = qint64(1) << 27;      // pixels
constexpr qint64 kLargestTile = qint64(9) * 1024 * 1024; // pixels: the window of a 4K screen in one piece
constexpr int kTileSize = 2048;
constexpr int kLargestSoftwareTile = 16384; // edge, pixels

// The whole picture, or tiles of it in rows; narrow pictures have long ones.
QList<QRect> TilesOf(const QSize& size, int maximumSize)
{
    const bool whole = size.width() <= maximumSize && size.height() <= maximumSize
                       && qint64(size.width()) * size.height() <= kLargestTile;
    const int edge = std::min(kTileSize, maximumSize);
    const auto along = [&](int across) {
        return std::min(maximumSize, edge * edge / std::min(across, edge));
    };
    const QSize tile = whole ? size : QSize(along(size.height()), along(size.width()));
    QList<QRect> tiles;
    for (int y = 0; y < size.height(); y += tile.height()) {
        for (int x = 0; x < size.width(); x += tile.width())
            tiles << QRect(QPoint(x, y), tile).intersected(QRect(QPoint(0, 0), size));
    }
    return tiles;
}

} // namespace

bool ZORVisPicture::IsDrawable(const QSize& size)
{
    return !size.isEmpty() && qint64(size.width()) * size.height() <= kLargestPicture;
}

QImage ZORVisPicture::Draw(const ZORVisFrame& frame, const ZORVisDrawList& objects, ZORVisGlScene* glScene)
{
    QImage picture(frame.size, QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    ZORVisOverlay overlay(frame, objects, &m_markers);
    const int maximumSize =
        glScene ? ZORVisGraphicsContext::GetInstance()->GetMaximumSize() : kLargestSoftwareTile;
    const QList<QRect> tiles = TilesOf(frame.size, maximumSize);
    for (const QRect& tile : tiles) {
        if (glScene && glScene->Draw(frame, tile, m_buffer)) {
            m_buffer.ReadColor(picture, tile.topLeft());
            if (!overlay.IsEmpty())
                m_buffer.ReadDepth(m_depth);
        } else {
            ZORVisSoftware(frame, tile, picture, m_depth).Draw(objects);
        }
        if (!overlay.IsEmpty())
            overlay.Hide(tile, m_depth);
    }
    overlay.Paint(picture);
    return picture;
}
