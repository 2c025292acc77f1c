// Layer draped over a surface.

#pragma once

#include <ZORComposites/ZORCompDrapingNet.h>
#include <ZORFeature/ZORFeatComputedGeometry.h>

#include <memory>

class ZORCompRosette;
class ZORCompStrategy;
class ZORMathVector;

/// A woven layer, or a unidirectional one with its transverse direction as the weft, draped kinematically over a
/// surface and kept up to date with its inputs as every ZORFeatComputedGeometry: ZORCompKinematicDraping.
///
/// Inputs.    Strategy, surface and seed are needed. Surface and seed are geometries or features around them; a
///            seed that is not tied to the surface goes to the nearest place of it. The direction from which the
///            fibre angle is measured is the X axis of the rosette, without one the direction. The layer holds a
///            counted reference to each and is draped anew when the strategy, the rosette or the body of another
///            feature changes.
/// Result.    The net, and a body around a surface of it: its vertices are the nodes of the net, triangles 2 k + 1
///            and 2 k + 2 are cell k, both counter-clockwise seen from the side where warp to weft is.
/// Failures.  "the surface of the layer is no surface", "the seed is no point", "the seed cannot be projected onto
///            the surface" (it is empty), and those of ZORCompKinematicDraping.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompDrapingLayer : public ZORFeatComputedGeometry
{
    Q_OBJECT

public:
    /// Without inputs but the direction X.
    /// \param parent  the feature the layer lies in; null leaves it without a container
    explicit ZORCompDrapingLayer(ZORFeatObject* parent);
    ~ZORCompDrapingLayer() override;

    QList<ZORFeatObject*> GetInputs() const override;

    // All setters of features throw "a feature cannot depend on itself" for this layer and features computed from it,
    // and change nothing then. Nothing is owned; null takes the input away.

    void SetStrategy(ZORCompStrategy* strategy);
    /// \param surface  a ZORGeoSurface or a feature around one
    void SetSurface(ZORGeoGeometry* surface);
    /// \param seed  a ZORGeoPoint or a feature around one
    void SetSeed(ZORGeoGeometry* seed);
    void SetRosette(ZORCompRosette* rosette);
    /// \param direction  of any length
    void SetDirection(const ZORMathVector& direction);

    ZORCompStrategy* GetStrategy() const;
    ZORGeoGeometry* GetSurface() const;
    ZORGeoGeometry* GetSeed() const;
    ZORCompRosette* GetRosette() const;
    ZORMathVector GetDirection() const;

    /// The last good result, empty before the first. Its locations are null when the surface they are on has been
    /// destroyed, but for their points.
    const ZORCompDrapingNet& GetNet() const;
    /// \param cell  0 ... number of cells - 1 (asserted), here and in GetFibreAngle()
    /// \return radians, see ZORCompDrapingNet
    double GetShear(int cell) const;
    double GetFibreAngle(int cell) const;
    /// Radians; 0 without a result.
    double GetMaximumShear() const;
    /// Indices of the cells whose shear is greater than the locking angle of the strategy; none without strategy.
    QList<int> GetLockedCells() const;

protected:
    bool IsComplete() const override;
    ZORFeatShape Compute() const override;

private:
    friend struct ZORCompDrapingLayerStorage;
    void SetGeometry(ZORGeoReference<ZORGeoGeometry>& input, ZORGeoGeometry* geometry);

    class Private;
    const std::unique_ptr<Private> d;
};
