// A request to the user to point at something in the view.

#pragma once

#include <ZORCommand/ZORCmdPick.h>
#include <ZORCommand/ZORCommandGlobal.h>

#include <QFlags>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

/// Asks for an object, or for a location on a surface. A command or a widget starts it, the answerer of the
/// controller passes to it what the user does in the view.
///
/// Life.      Owned by whoever made it, reusable. It is active from Start() until it ends: it is answered (once),
///            completed (a sequence), canceled, or destroyed. Starting one cancels the one that was active.
/// Receivers. Ended() is the last signal of a run. Receivers may destroy the request or start another one.
///
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdPickRequest : public QObject
{
    Q_OBJECT

public:
    /// What the user may point at.
    enum Kind : int {
        Points = 1,
        Curves = 2,
        Surfaces = 4,
        SurfaceLocations = 8, ///< a location of a surface: the pick has one
    };
    Q_DECLARE_FLAGS(Kinds, Kind)
    /// What ends the request.
    enum class Extent {
        One,     ///< the first answer
        Sequence ///< Complete(); answers are taken back one by one
    };
    /// Whether an object may be picked.
    using Filter = std::function<bool(const ZORGeoGeometry& object)>;

    /// \param prompt  a sentence that says what to point at
    ZORCmdPickRequest(Kinds kinds, const QString& prompt, QObject* parent);
    /// Ends the request if it is active, without Canceled().
    ~ZORCmdPickRequest() override;

    Kinds GetKinds() const;
    QString GetPrompt() const;
    void SetPrompt(const QString& prompt);
    /// Extent::One unless it is set.
    Extent GetExtent() const;
    void SetExtent(Extent extent);

    /// Limits what may be picked beyond the kinds. An empty function sets no limit.
    void SetFilter(const Filter& filter);
    /// Returns whether an answer with this object passes the filter. Views show by it what may be clicked.
    bool Accepts(const ZORGeoGeometry* object) const;

    /// Chains of points that the view marks while the request is active: what has been picked so far, and the paths
    /// between. A chain of one point is a mark, a longer one a polyline with marks at its ends. Millimeters.
    QList<QList<ZORMathPoint>> GetPreview() const;
    void SetPreview(const QList<QList<ZORMathPoint>>& preview);

    bool IsActive() const;
    /// Gives the request to the answerer of the controller.
    /// \throws ZORSysException "there is no view to pick in", "the request is active already"
    void Start();

    // For the answerer, and for tests. All of them do nothing while the request is not active.

    /// The user clicked.
    /// \return false when the pick does not fit: it has no object or the filter refuses it, or it lacks the location
    ///         where only locations were asked for. The request goes on then
    bool Answer(const ZORCmdPick& pick);
    /// The user takes the last answer of a sequence back; ignored for a single one.
    void TakeBack();
    /// The user ends a sequence; ignored for a single one.
    void Complete();
    /// The user, the answerer or the command gives up.
    void Cancel();

signals:
    void Picked(const ZORCmdPick& pick);
    void TakenBack();
    void Completed();
    void Canceled();
    /// The request is not active any more, after Picked() of a single one, Completed() or Canceled().
    void Ended();
    void PromptChanged(const QString& prompt);
    void PreviewChanged();

private:
    void End(void (ZORCmdPickRequest::*reason)());
    void Leave();

    class Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZORCmdPickRequest::Kinds)
