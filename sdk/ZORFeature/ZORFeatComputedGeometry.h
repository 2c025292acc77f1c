// Feature with a shape that is computed from other features.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatShape.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <QList>
#include <QString>

#include <memory>

/// Base of the features that are computed from others and follow them.
///
/// Inputs.     Features, to each of which the feature holds a counted reference; a derived class has a setter for
///             each, lists them in GetInputs() and computes with them. It refuses itself and what is computed from
///             it: "a feature cannot depend on itself".
/// Updates.    Registered, the feature computes whenever an input that it uses is set to something else, or the
///             body of one changes, at once and in the calling thread. It waits while an input is missing: null,
///             removed, or without geometry. A setter throws what a computation that has all inputs throws; the
///             new input is then kept. A failure after the change of another feature is a warning of category
///             "zor.feature".
/// Result.     The last good one stays through missing inputs and failures. Body and geometry are registered and
///             owned by the feature: each computation replaces them, and with them goes what others still
///             reference; the new ones take over the names of the old.
/// Files.      The result is saved and comes back as it was. The storage of a derived class adds the inputs, as
///             links, and sets them in its Complete(): nothing is computed before the feature is registered, and
///             nothing when it is registered with a result that was loaded.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatComputedGeometry : public ZORFeatGeometry
{
    Q_OBJECT

public:
    ~ZORFeatComputedGeometry() override;

    /// Registers the feature, then computes if all inputs are there.
    /// \throws ZORSysException as ZORFeatObject::Initialize(), and those of failures; the feature is then
    ///         registered
    void Initialize() override;

    /// Null until the first computation has succeeded, and once somebody has destroyed it.
    ZORTopBody* GetBody() const override;
    QList<ZORGeoGeometry*> GetOwnedGeometry() const override;
    /// The message of the last computation if it failed, else empty.
    QString GetFailure() const;

protected:
    explicit ZORFeatComputedGeometry(ZORFeatObject* parent);

    /// Whether nothing that the computation needs is missing.
    virtual bool IsComplete() const = 0;
    /// Computes from complete inputs. What it registers with the container reaches receivers that may remove this
    /// feature: members are then gone.
    /// \return a shape with a body
    /// \throws ZORSysException when the inputs do not fit
    virtual ZORFeatShape Compute() const = 0;

    /// Sets an input, null for none.
    /// \param input   a member, which GetInputs() lists
    /// \param isUsed  whether the result depends on it now
    template<class Feature>
    void SetInput(ZORGeoReference<Feature>& input, Feature* feature, bool isUsed = true)
    {
        if (input.Get() == feature)
            return;
        CheckInput(feature);
        Feature* const before = input.Get();
        input = ZORGeoReference<Feature>(feature, this);
        ReportChange();
        Unfollow(before);
        Follow(feature);
        if (isUsed)
            Update();
    }
    /// \throws ZORSysException "a feature cannot depend on itself"
    void CheckInput(const ZORFeatObject* feature) const;
    /// Computes again whenever the body of \a feature changes; null is ignored.
    void Follow(ZORFeatObject* feature);
    /// Takes Follow() back, unless GetInputs() still lists the feature; null is ignored.
    void Unfollow(ZORFeatObject* feature);
    /// Computes if the feature is registered and its inputs are there.
    void Update();
    /// Does the same after a signal of an input: a failure is a warning then.
    void OnInputChanged();

private:
    friend struct ZORFeatComputedGeometryStorage;
    void Replace(ZORFeatShape&& shape);

    class Private;
    const std::unique_ptr<Private> d;
};
