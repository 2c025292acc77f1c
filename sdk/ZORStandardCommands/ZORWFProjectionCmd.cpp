#include "ZORWFProjectionCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORWireframe/ZORWFProjection.h>

#include <QCoreApplication>

namespace {

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORWFProjectionCmd)

public:
    Content(ZORFeatEnvironment* environment, QWidget* parent)
        : ZORStdContent(environment, parent)
    {
        using Combo = ZORStdObjectCombo;
        AddLabel(ZORStdUniqueLabel(*GetContainer(), tr("Projection")));
        m_sourceCombo = AddObjects("_SourceCombo", tr("Point or curve:"),
                                   Combo::ShapeFilter(Combo::Points | Combo::Curves));
        m_supportCombo = AddObjects("_SupportCombo", tr("Surface:"), Combo::ShapeFilter(Combo::Surfaces));
        AddFolder();
        Check();
    }

    void Apply() override
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

protected:
    QString FindProblem() const override
    {
        if (!m_sourceCombo->GetObject())
            return tr("Choose a point or a curve to project.");
        if (!m_supportCombo->GetObject())
            return tr("Choose the surface to project onto.");
        return FindLabelProblem();
    }

private:
    ZORStdObjectCombo* m_sourceCombo = nullptr;
    ZORStdObjectCombo* m_supportCombo = nullptr;
};

} // namespace

ZORWFProjectionCmd::ZORWFProjectionCmd(QObject* parent)
    : ZORStdDialogCommand(parent)
{
}

ZORStdContent* ZORWFProjectionCmd::MakeContent(ZORFeatEnvironment* environment, QWidget* parent) const
{
    return new Content(environment, parent);
}
