// A laminate: sequences of plies on a support surface.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORFeature/ZORFeatFolder.h>

#include <memory>

class ZORCompPly;
class ZORCompRosette;
class ZORCompSequence;
class ZORGeoSurface;

/// Holds sequences, and the rosettes and contours that came with them. Holds counted references to its support
/// and its rosette; both may be missing, and become null when they are removed.
///
/// Stack. The plies of all sequences, in the order of the tree: the first one lies on the support. Plies and
///        sequences that are not active do not count, nor what lies below such a sequence.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompLayup : public ZORFeatFolder, public ZORCompAttributed
{
    Q_OBJECT

public:
    /// \param parent  a composites root or any other feature; null leaves the layup without a container
    explicit ZORCompLayup(ZORFeatObject* parent);
    ~ZORCompLayup() override;

    /// The surface that the first ply lies on; not owned, null for none.
    void SetSurface(const ZORGeoSurface* surface);
    const ZORGeoSurface* GetSurface() const;
    /// The rosette of all sequences and plies without one of their own; not owned, null for none.
    void SetRosette(ZORCompRosette* rosette);
    ZORCompRosette* GetRosette() const;
    /// The file that the layup was read from, empty for none.
    void SetSource(const QString& fileName);
    QString GetSource() const;

    /// The sequences directly below the layup.
    QList<ZORCompSequence*> GetSequences() const;
    /// The active plies of the stack.
    QList<ZORCompPly*> GetPlies() const;
    int GetNumPlies() const;

    /// The sum of the thicknesses of the plies, where all of them lie on top of each other; millimetres. 0 for
    /// no plies; NaN when one has no material or the thickness of that is unknown.
    double GetThickness() const;
    /// The sum of the masses of the plies, kilograms; NaN when one of them is unknown, see ZORCompPly::GetMass().
    double GetMass() const;
    /// Whether the stack is its own mirror image, by materials and angles (up to half turns, within 1e-9 rad)
    /// alone. True for no plies.
    bool IsSymmetric() const;
    /// Whether every material has as many plies of each angle other than 0 and 90 degrees as of the opposite
    /// one, within 1e-9 rad. True for no plies. O(n log n).
    bool IsBalanced() const;

signals:
    /// The surface or the rosette is another one.
    void InputsChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
