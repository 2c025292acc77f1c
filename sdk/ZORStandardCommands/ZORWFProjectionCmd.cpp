#include "ZORWFProjectionCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWireframe/ZORWFProjection.h>

#include <QCoreApplication>
#include <QPointer>

namespace {

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORWFProjectionCmd)

public:
    Content(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
        : ZORStdContent(environment, edited, parent)
    {
        using Combo = ZORStdObjectCombo;
        const auto* const projection = GetEdited<ZORWFProjection>();
        AddLabel(tr("Projection"));
        m_sourceCombo =
            AddObjects("_SourceCombo", tr("&Point or curve:"), MakeFilter(Combo::Points | Combo::Curves), {},
                       {ZORCmdPickRequest::Points | ZORCmdPickRequest::Curves,
                        tr("Click a point or a curve in the view")});
        m_supportCombo = AddObjects("_SupportCombo", tr("&Surface:"), MakeFilter(Combo::Surfaces), {},
                                    {ZORCmdPickRequest::Surfaces, tr("Click a surface in the view")});
        AddFolder();
        if (projection) {
            m_sourceCombo->Select(projection->GetSource());
            m_supportCombo->Select(projection->GetSupport());
        }
        Check();
    }

protected:
    void Create() override
    {
        ZORStdCreation creation;
        ZORFeatObject* const folder = GetFolder(creation);
        ZORFeatGeometry* const source = creation.AddFeatureOf(m_sourceCombo->GetObject(), folder);
        ZORFeatGeometry* const support = creation.AddFeatureOf(m_supportCombo->GetObject(), folder);
        auto* const projection = new ZORWFProjection(folder);
        projection->SetSource(source);
        projection->SetSupport(support);
        creation.Add(projection, GetLabel());
        creation.Keep();
    }

    void Change() override
    {
        auto* const projection = GetEdited<ZORWFProjection>();
        ZORFeatGeometry* const oldSource = projection->GetSource();
        ZORFeatGeometry* const oldSupport = projection->GetSupport();
        ZORStdCreation creation;
        ZORFeatObject* const folder = projection->GetParentFeature();
        ZORFeatGeometry* const source = creation.AddFeatureOf(m_sourceCombo->GetObject(), folder);
        ZORFeatGeometry* const support = creation.AddFeatureOf(m_supportCombo->GetObject(), folder);
        try {
            SetInputs(*projection, source, support);
        } catch (const ZORSysException&) {
            RestoreInputs(*projection, oldSource, oldSupport);
            throw;
        }
        creation.Keep();
    }
    QString FindProblem() const override
    {
        if (!m_sourceCombo->GetObject())
            return tr("Choose a point or a curve to project.");
        if (!m_supportCombo->GetObject())
            return tr("Choose the surface to project onto.");
        return FindLabelProblem();
    }

private:
    // What is computed from the projection cannot be an input of it.
    ZORStdObjectCombo::Filter MakeFilter(ZORStdObjectCombo::Shapes shapes) const
    {
        const QPointer<const ZORFeatObject> edited = GetEdited<ZORFeatObject>();
        const auto hasShape = ZORStdObjectCombo::ShapeFilter(shapes);
        return [edited, hasShape](const ZORGeoGeometry& object) {
            const auto* const feature = qobject_cast<const ZORFeatObject*>(&object);
            return hasShape(object) && !(edited && feature && feature->DependsOn(edited));
        };
    }
    // Computes once: without a source the projection waits.
    static void SetInputs(ZORWFProjection& projection, ZORFeatGeometry* source, ZORFeatGeometry* support)
    {
        if (support != projection.GetSupport()) {
            projection.SetSource(nullptr);
            projection.SetSupport(support);
        }
        projection.SetSource(source);
    }
    static void RestoreInputs(ZORWFProjection& projection, ZORFeatGeometry* source, ZORFeatGeometry* support)
    {
        try {
            SetInputs(projection, source, support);
        } catch (const ZORSysException&) {
            // They had failed before.
        }
    }

    ZORStdObjectCombo* m_sourceCombo = nullptr;
    ZORStdObjectCombo* m_supportCombo = nullptr;
};

} // namespace

ZORWFProjectionCmd::ZORWFProjectionCmd(QObject* parent)
    : ZORStdDialogCommand(parent, tr("Edit Projection"))
{
}

ZORStdContent* ZORWFProjectionCmd::MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                               QWidget* parent) const
{
    return new Content(environment, edited, parent);
}
