// Finds out where a growing net of yarns meets itself.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

#include <QHash>

#include <array>
#include <vector>

/// The cells and straight yarns of a net, found by place.
///
/// A place is covered when it is on a cell or above it by less than a quarter step, and both face the same way:
/// the two sides of a thin part are two places, for a net knows its own sides whatever the windings of triangles
/// are. Cells next to the node asked for in the grid do not count.
class ZORCompNetOverlap
{
public:
    explicit ZORCompNetOverlap(double step);

    struct Place
    {
        int warp = 0;
        int weft = 0;
        ZORMathPoint point;
        ZORMathVector normal; // of length 1, to the side from which warp to weft is counter-clockwise
    };

    /// \param corners  in the order of ZORCompDrapingCell
    void AddCell(int warp, int weft, const std::array<ZORMathPoint, 4>& corners);
    /// Adds a node of a yarn that does not depend on others: it has no cells on it at first, or none ever where
    /// the surface is a strip that is narrower than a step.
    void AddYarnNode(const Place& node) { m_yarnNodes[VoxelOf(node.point)].push_back(node); }

    /// Whether the node would be on a cell, O(1).
    bool IsOnCell(const Place& node) const;
    /// Whether the node would be within half a step of a node of a straight yarn. O(1).
    bool IsOnYarn(const Place& node) const;

private:
    struct Cell
    {
        int warp;
        int weft;
        ZORMathPoint center;
        ZORMathVector warpSide; // mean of both
        ZORMathVector weftSide;
        ZORMathVector normal; // of length 1
    };
    struct Voxel
    {
        qint64 x;
        qint64 y;
        qint64 z;
        friend bool operator==(const Voxel&, const Voxel&) = default;
        friend size_t qHash(const Voxel& voxel, size_t seed)
        {
            return qHashMulti(seed, voxel.x, voxel.y, voxel.z);
        }
    };
    template<class Item, class Test>
    bool AnyNear(const QHash<Voxel, std::vector<Item>>& items, const ZORMathPoint& point,
                 const Test& test) const;
    Voxel VoxelOf(const ZORMathPoint& point) const;
    bool Covers(const Cell& cell, const Place& node) const;

    const double m_step;
    QHash<Voxel, std::vector<Cell>> m_cells; // by the voxels of their centres
    QHash<Voxel, std::vector<Place>> m_yarnNodes;
};
