#include "view/ZORHostPresentation.h"

#include "base/ZORHostPreferences.h"
#include "view/ZORHostView3D.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatPresentation.h>
#include <ZORFeature/ZORFeatStyles.h>

ZORHostPresentation::ZORHostPresentation(ZORHostView3D* view, QObject* parent)
    : QObject(parent)
    , m_view(view)
{
    connect(ZORHostPreferences::Get(), &ZORHostPreferences::Changed, this,
            &ZORHostPresentation::ApplyPreferences);
}

ZORHostPresentation::~ZORHostPresentation() = default;

void ZORHostPresentation::SetEnvironment(ZORFeatEnvironment* environment)
{
    m_presentation.reset(); // before the scene that it draws into
    m_environment = environment;
    m_view->SetEnvironment(environment);
    if (!environment)
        return;
    ApplyPreferences();
    m_presentation = std::make_unique<ZORFeatPresentation>(environment, m_view->GetScene());
    connect(m_presentation.get(), &ZORFeatPresentation::UpToDate, m_view, &ZORHostView3D::OnDocumentShown);
    connect(m_presentation.get(), &ZORFeatPresentation::UpToDate, this, &ZORHostPresentation::UpToDate);
}

ZORGeoGeometry* ZORHostPresentation::GetDrawn(const ZORGeoGeometry* object) const
{
    return m_presentation ? m_presentation->GetDrawn(object) : nullptr;
}

void ZORHostPresentation::ApplyPreferences()
{
    if (m_environment)
        m_environment->GetContainer()->GetStyles()->SetNewVisible(
            ZORHostPreferences::Get()->ShowsEverythingNew());
}
