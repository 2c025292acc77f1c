// Net of yarns that drapes a surface.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QCoreApplication>
#include <QList>
#include <QSharedDataPointer>

#include <array>

class ZORCompDrapingNetData;
class ZORMathVector;

/// A crossing of a warp yarn and a weft yarn.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORCompDrapingNode
{
    int warp = 0; // steps from the seed along the warp yarns, negative behind it
    int weft = 0; // steps from the seed along the weft yarns
    ZORGeoLocationOnSurface location;
};

/// A quadrangle of four nodes, between two neighbouring warp yarns and two neighbouring weft yarns.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORCompDrapingCell
{
    std::array<int, 4> nodes{}; // indices of the nodes (i, j), (i + 1, j), (i + 1, j + 1), (i, j + 1)
    double shear = 0;           // radians by which the angle between the yarns is less than in the flat net
    double fibreAngle = 0;      // radians from the reference direction to the warp, see ZORCompDrapingNet
};

/// A draped net: nodes on a surface and the cells between them; empty by default. A value: copies share their data until
/// one of them is changed, O(1). One that was moved from may only be assigned or destroyed.
///
/// Nodes.    Sorted by weft, then by warp; the seed is (0, 0). Not all places of the grid are taken: the net ends
///           at the border of the surface, goes around holes, and ends where it folds or meets itself.
/// Cells.    Sorted as their first nodes. All four sides of every cell are one step long, measured straight from
///           node to node, to 1e-6 of the step; four neighbouring nodes that are not make no cell.
/// Angles.   Measured between the mean warp and weft directions of a cell. Shear is positive where the yarns have
///           closed between the positive directions of warp and weft, negative where they have opened. The fibre
///           angle lies in (-pi, pi], counter-clockwise about warp x weft from the reference direction,
///           projected on the plane of the cell, to the warp; 0 where the projection vanishes.
/// Lifetime. As that of its locations: use it no longer than the surface.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompDrapingNet
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompDrapingNet)

public:
    ZORCompDrapingNet();
    /// \param step       millimetres from node to node
    /// \param yarnAngle  radians from warp to weft in the flat net
    /// \throws ZORSysException "nodes of the net are not in order", "cell %1 of the net is not between four
    ///         neighbouring nodes", counted from 0
    ZORCompDrapingNet(double step, double yarnAngle, const QList<ZORCompDrapingNode>& nodes,
                      const QList<ZORCompDrapingCell>& cells);
    ZORCompDrapingNet(const ZORCompDrapingNet& other);
    ZORCompDrapingNet(ZORCompDrapingNet&& other) noexcept;
    ZORCompDrapingNet& operator=(const ZORCompDrapingNet& other);
    ZORCompDrapingNet& operator=(ZORCompDrapingNet&& other) noexcept;
    ~ZORCompDrapingNet();
    void swap(ZORCompDrapingNet& other) noexcept { d.swap(other.d); }

    bool IsEmpty() const;
    /// Millimetres; 0 for the empty net.
    double GetStep() const;
    /// Radians from warp to weft in the flat net.
    double GetYarnAngle() const;
    const QList<ZORCompDrapingNode>& GetNodes() const;
    const QList<ZORCompDrapingCell>& GetCells() const;

    /// Index of the node at a place of the grid, -1 where there is none. O(log n).
    int FindNode(int warp, int weft) const;
    /// Index of the cell from (warp, weft) to (warp + 1, weft + 1), -1 where there is none. O(log n).
    int FindCell(int warp, int weft) const;

    /// Makes the locations null but for their points. O(n) where it is not done already.
    void DetachFromSurface();

    /// The largest shear of all cells, whatever its sign, radians; 0 without cells. O(n).
    double GetMaximumShear() const;
    /// Indices of the cells whose shear is greater than an angle, whatever its sign: there the yarns jam and the
    /// layer wrinkles. O(n).
    /// \param lockingAngle  radians
    QList<int> GetLockedCells(double lockingAngle) const;

private:
    friend class ZORCompNetGrowth;
    // Measures the angles of a cell from the places of its nodes.
    // The reference direction is not zero.
    static void Measure(ZORCompDrapingCell& cell, const QList<ZORCompDrapingNode>& nodes, double yarnAngle,
                        const ZORMathVector& reference);

    QSharedDataPointer<ZORCompDrapingNetData> d;
};

Q_DECLARE_SHARED(ZORCompDrapingNet)
