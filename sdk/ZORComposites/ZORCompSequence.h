// Ordered group of plies.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORFeature/ZORFeatFolder.h>

#include <memory>

class ZORCompLayup;
class ZORCompPly;
class ZORCompRosette;

/// Plies, and further sequences, in the order in which they are laid: the order of their registration.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompSequence : public ZORFeatFolder, public ZORCompAttributed
{
    Q_OBJECT

public:
    /// \param parent  a layup or a sequence; null leaves the sequence without a container
    /// \throws ZORSysException "a sequence needs a layup or a sequence as its parent" for any other feature
    explicit ZORCompSequence(ZORFeatObject* parent);
    ~ZORCompSequence() override;

    /// The rosette of the plies below without one of their own; not owned, null: the one from above.
    void SetRosette(ZORCompRosette* rosette);
    ZORCompRosette* GetRosette() const;
    /// The rosette of the sequence, else of the nearest sequence or layup above it; null when none has one.
    ZORCompRosette* GetEffectiveRosette() const;

    /// An inactive sequence is kept, but is not part of the stack; active by default.
    void SetActive(bool isActive);
    bool IsActive() const;

    /// The layup that the sequence belongs to; null without a parent.
    ZORCompLayup* GetLayup() const;
    /// The plies directly below the sequence, the inactive ones included.
    QList<ZORCompPly*> GetPlies() const;

signals:
    void RosetteChanged();
    void ActiveChanged(bool isActive);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
