// Kinematic draping of a surface.

#pragma once

#include <ZORComposites/ZORCompDrapingNet.h>
#include <ZORComposites/ZORCompStrategyParameters.h>

#include <memory>

class ZORGeoSurface;
class ZORMathVector;

/// Drapes a net of yarns that neither stretch nor slip where they cross: only the angle between them changes.
///
/// Net.       Two yarns run through the seed, the warp at the fibre angle of the strategy from the reference
///            direction, the weft at the yarn angle from the warp, both counter-clockwise about the normal of the
///            triangle of the seed. All other nodes follow: each is one step from its neighbours. Yarns that reach
///            parts of the surface where nothing crosses them run straight on.
/// Distance.  A step is measured straight from node to node; the way over a surface of radius R between them is
///            longer by step^2 / 24 R^2 of it. Across a sharp fold the net spans the corner.
/// Ends.      The net ends at the border and at edges of more than two triangles, goes around holes, does not
///            cover itself (a closed surface is covered once, with gaps below a step where its parts meet), and
///            ends where yarns would come nearer to parallel than 5 degrees or a crossing would turn by more than
///            120 degrees, around a knife edge. Locked cells do not end it.
/// Windings   of the other triangles do not matter.
/// Accuracy.  Sides of cells: 1e-6 of the step, mostly 1e-12. Shear on a sphere of radius R: about
///            0.1 (step / R)^2 rad with a fine mesh. Flat surfaces: no shear but rounding.
/// Cost.      About 5 us a node and 0.3 us for every triangle between the corners of a cell; 450 bytes a node
///            while it grows. The same input gives the same net.
///
/// C. Mack, H. M. Taylor: The fitting of woven cloth to surfaces, J. Textile Institute 47, 1956; R. E. Robertson
/// et al.: Fiber rearrangements during the molding of continuous fiber composites, Polymer Composites 2, 1981;
/// F. Van Der Weeen: Algorithms for draping fabrics on doubly-curved surfaces, Int. J. Numer. Meth. Engng 31,
/// 1991. Theirs solve for each node by iteration; here its place is followed along a section of the mesh.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompKinematicDraping
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompKinematicDraping)

public:
    /// \param surface  not owned, must outlive the object and its nets
    /// \throws ZORSysException as ZORCompStrategyParameters::Check(), "surface is null", "the step is too small
    ///         for the surface" (below 1e-8 of its size or of its distance from the origin)
    ZORCompKinematicDraping(const ZORGeoSurface* surface, const ZORCompStrategyParameters& parameters);
    ~ZORCompKinematicDraping();

    /// \param direction  the reference direction of the fibre angle, of any length; its projection on the triangle
    ///                   of the seed counts
    /// \return a net with one cell at least
    /// \throws ZORSysException "seed is not on the surface", "the direction is perpendicular to the surface at the
    ///         seed" (within 1e-9 rad, also when it is zero), "direction is not finite", "no cell of the net fits
    ///         on the surface at the seed", "the net would have more than 1000000 nodes, take a larger step", by the
    ///         area of the surface and of the extents, or when it has come to so many
    ZORCompDrapingNet Run(const ZORGeoLocationOnSurface& seed, const ZORMathVector& direction) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
