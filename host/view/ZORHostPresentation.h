// What the host shows of the document.

#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class ZORFeatEnvironment;
class ZORFeatPresentation;
class ZORGeoGeometry;
class ZORHostView3D;

/// Shows the objects of the current document in the 3D view. What people open, import or create by commands is seen at
/// once; what a plug-in creates by itself is hidden until somebody opens its eye, unless the preferences say otherwise.
class ZORHostPresentation : public QObject
{
    Q_OBJECT

public:
    /// \param view  not owned, must outlive the presentation
    ZORHostPresentation(ZORHostView3D* view, QObject* parent);
    ~ZORHostPresentation() override;

    /// Follows another document, in the view as well.
    /// \param environment  not owned; null shows nothing. May die first.
    void SetEnvironment(ZORFeatEnvironment* environment);

    /// Null without a document.
    ZORFeatPresentation* GetPresentation() const { return m_presentation.get(); }
    /// Returns the object of the document by whose drawing people see an object, see ZORFeatPresentation::GetDrawn().
    ZORGeoGeometry* GetDrawn(const ZORGeoGeometry* object) const;

signals:
    /// The view shows all changes so far, and did not before.
    void UpToDate();

private:
    void ApplyPreferences();

    ZORHostView3D* const m_view;                // not owned
    QPointer<ZORFeatEnvironment> m_environment; // not owned
    std::unique_ptr<ZORFeatPresentation> m_presentation;
};
