// Draws surfaces and lines without OpenGL.

#pragma once

#include "scene/ZORVisFrame_p.h"

#include <QImage>
#include <QRect>

#include <vector>

class QPainter;
struct ZORVisMeshArrays;
struct ZORVisMeshData;

/// Draws one tile of a picture: triangles into a depth buffer of its own, visible parts of lines with
/// QPainter.
class ZORVisSoftware
{
public:
    /// \param picture     the whole picture, of format RGB32, shared with nobody
    /// \param[out] depth  of the tile's pixels, row by row from the top, 0 at the near plane,
    ///                    1 at the far plane
    ZORVisSoftware(const ZORVisFrame& frame, const QRect& tile, QImage& picture, std::vector<float>& depth);

    void Draw(const ZORVisDrawList& objects);

private:
    struct Vertex
    {
        float x = 0; // of the tile
        float y = 0;
        float depth = 0;
        float diffuse = 0;
        float specular = 0;
    };
    struct Place
    {
        QPointF pixel; // of the picture
        double depth = 0;
    };
    void DrawBackground();
    enum class Pass { Opaque, Transparent };
    void DrawMeshes(const ZORVisDrawList& objects, Pass pass);
    void DrawMesh(const ZORVisMeshData& mesh, const ZORVisOptions& options);
    void DrawEdges(const std::vector<uint32_t>& corners, const QColor& color);
    void Project(const ZORVisMeshArrays& arrays, const ZORMathPoint& origin);
    void FillTriangle(const Vertex& a, const Vertex& b, const Vertex& c, const QColor& color);
    void DrawEdge(const Vertex& a, const Vertex& b, const QColor& color);
    /// \param lineDepth  up to which depth lines on the surface are seen
    void SetPixel(int x, int y, float depth, float lineDepth, const QColor& color, float diffuse,
                  float specular);
    void Blend(int x, int y, const QColor& color, float diffuse, float specular);

    void DrawLines(QPainter& painter, const ZORVisRepItem& item);
    void DrawChain(QPainter& painter, const std::vector<Place>& chain, const QPen& pen);
    bool Clip(const Place& from, const Place& to, double& first, double& last) const;
    bool IsSeen(const Place& place) const;

    const ZORVisFrame& m_frame;
    const QRect m_tile;
    QImage& m_picture;
    std::vector<float>& m_depth;
    QRgb* const m_pixels;           // not owned; of the picture, whose rows follow each other without a gap
    std::vector<Vertex> m_vertices; // of the mesh being drawn
    std::vector<float> m_lineDepth; // as m_depth, for lines on surfaces
    bool m_hasDepth = false;        // something was drawn into the depth buffer
    double m_margin = 0;            // pixels around the tile in which the line being drawn can touch it
};
