#include "console/ZORTestDebugVisualization.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORVisualization/ZORVisRepSet.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QList>

ZORTestDebugVisualization::ZORTestDebugVisualization(ZORFeatEnvironment* environment)
    : m_environment(environment)
{
}

ZORTestDebugVisualization::~ZORTestDebugVisualization()
{
    Hide();
}

void ZORTestDebugVisualization::Show()
{
    ZORVisVirtualObject* object = Create();
    Hide();
    m_object = object;
    if (object)
        m_environment->AddVirtualObject(object);
}

void ZORTestDebugVisualization::Hide()
{
    delete m_object;
}

ZORVisVirtualObject* ZORTestDebugVisualization::Create() const
{
    const ZORDebugVizContainer* container = ZORDebugVizContainer::GetContainer();
    QList<ZORVisRep*> reps;
    for (int index = 0; index < container->GetNumObjects(); ++index) {
        if (ZORVisRep* rep = container->GetObject(index)->GetRep())
            reps.append(rep);
    }
    if (reps.isEmpty())
        return nullptr;
    auto* object = new ZORVisVirtualObject(m_environment, nullptr);
    object->SetRep(new ZORVisRepSet(reps));
    return object;
}
