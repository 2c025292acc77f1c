// One ply of a layup.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORFeature/ZORFeatGeometry.h>

#include <QList>

#include <memory>

class ZORCompLayup;
class ZORCompMaterial;
class ZORCompRosette;
class ZORCompSequence;
class ZORGeoCurve;
class ZORGeoSurface;

/// A piece of material laid at an angle to a rosette within boundaries.
///
/// Inputs. Counted references, none owned: the material, the rosette, the boundary curves. Each may be missing,
///         and becomes null when it is removed.
/// Body.   Of the outer boundary, owned by the feature; null without one. It stays when the boundary is destroyed.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompPly : public ZORFeatGeometry, public ZORCompAttributed
{
    Q_OBJECT

public:
    /// Without inputs, at the angle 0, active.
    /// \param sequence  null leaves the ply without a container
    explicit ZORCompPly(ZORCompSequence* sequence);
    ~ZORCompPly() override;

    /// Registers the body and then the feature.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); the body then goes with the feature
    void Initialize() override;

    /// Null without an outer boundary, and once somebody has destroyed it.
    ZORTopBody* GetBody() const override;
    QList<ZORGeoGeometry*> GetOwnedGeometry() const override;

    void SetMaterial(ZORCompMaterial* material);
    ZORCompMaterial* GetMaterial() const;
    /// \param angle  radians, of the fibres from the X axis of the rosette towards its Y axis
    /// \throws ZORSysException "the angle of the ply is not finite"
    void SetAngle(double angle);
    /// Radians, as it was set.
    double GetAngle() const;
    /// \param rosette  null: the one of the sequence or layup
    void SetRosette(ZORCompRosette* rosette);
    ZORCompRosette* GetRosette() const;
    /// The rosette of the ply, else of the nearest sequence or the layup above it; null when none has one.
    ZORCompRosette* GetEffectiveRosette() const;
    /// \param boundaries  closed curves, the outer one first, then those of holes; an open one is closed by a
    ///                    straight segment; nulls are left out. None: the ply covers the whole support.
    void SetBoundaries(const QList<const ZORGeoCurve*>& boundaries);
    /// Those that are left, in the order in which they were set.
    QList<const ZORGeoCurve*> GetBoundaries() const;
    /// An inactive ply is kept, but is not part of the stack.
    void SetActive(bool isActive);
    bool IsActive() const;

    /// Null without a parent.
    ZORCompSequence* GetSequence() const;
    /// The layup that the ply belongs to; null without a parent.
    ZORCompLayup* GetLayup() const;
    /// The support surface of the layup; null when there is none.
    const ZORGeoSurface* GetSurface() const;

    /// The thickness of the material, millimetres; NaN when it is unknown.
    double GetThickness() const;
    /// The area of the ply, square millimetres: within planar boundaries (to 1e-6 of their extent), less that
    /// of the holes, or of the whole support when there are no boundaries. NaN for others. O(points).
    double GetArea() const;
    /// Area, thickness and density multiplied, kilograms; NaN when one of them is unknown.
    double GetMass() const;

signals:
    /// Material, angle, rosette, boundaries or activity are others, or a boundary has changed in place; after
    /// BodyChanged().
    void PlyChanged();

private:
    friend struct ZORCompPlyStorage;
    void FollowBoundaries();

    class Private;
    const std::unique_ptr<Private> d;
};
