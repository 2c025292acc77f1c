// Commands that draw on surfaces by clicks in the view.

#pragma once

#include <ZORCommand/ZORCmdCommand.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QList>

class ZORCmdPickRequest;
class ZORFeatContainer;
class ZORGeoGeometry;
struct ZORCmdPick;

/// Collects clicks on surfaces and creates geometry from them at the end: Return ends, Backspace takes the last click
/// back, Escape creates nothing. Nothing is created either when a surface is removed meanwhile. The property "method"
/// says what is created:
/// | method           | geometry |
/// |------------------|----------|
/// | "CreatePoints"   | a point on its surface for each click |
/// | "CreateLine"     | a line between two clicks; the second one ends the command |
/// | "CreatePolyline" | a polyline through all clicks |
/// Lines follow a surface on a shortest path between two clicks on it. Between surfaces they are straight.
class ZORWFDrawCmd final : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORWFDrawCmd(QObject* parent);
    ~ZORWFDrawCmd() override;

    /// \throws ZORSysException "there is no current environment", and as ZORCmdPickRequest::Start()
    void Start() override;

private:
    using Locations = QList<ZORGeoLocationOnSurface>;

    bool IsMethod(const char* method) const;
    void OnPicked(const ZORCmdPick& pick);
    void OnTakenBack();
    void OnCompleted();
    void OnAboutToBeRemoved(const ZORGeoGeometry* geometry);
    void Show();
    void Create() const;
    void CreatePoints() const;
    void CreateCurve() const;
    /// From one click to the next.
    struct Path
    {
        Locations locations;
        bool isOnSurface; ///< else it is a straight segment
    };
    static Path FindPath(const ZORGeoLocationOnSurface& from, const ZORGeoLocationOnSurface& to);

    ZORCmdPickRequest* m_request = nullptr;  // child
    ZORFeatContainer* m_container = nullptr; // not owned
    Locations m_clicks;
    QList<Path> m_paths; // between the clicks
};
