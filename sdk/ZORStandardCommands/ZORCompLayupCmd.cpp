#include "ZORCompLayupCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"
#include "ZORStdPlyTable.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QCoreApplication>

namespace {

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompLayupCmd)

public:
    Content(ZORFeatEnvironment* environment, QWidget* parent)
        : ZORStdContent(environment, parent)
    {
        using Combo = ZORStdObjectCombo;
        AddLabel(ZORStdUniqueLabel(*GetContainer(), tr("Layup")));
        m_surfaceCombo =
            AddObjects("_SurfaceCombo", tr("Surface:"), Combo::ShapeFilter(Combo::Surfaces), tr("None"));
        m_rosetteCombo =
            AddObjects("_RosetteCombo", tr("Rosette:"), Combo::ClassFilter<ZORCompRosette>(), tr("None"));
        AddCreator(m_rosetteCombo, "_NewRosetteBtn", "ZORCompRosetteCmd.Create");
        AddFolder();
        m_plies = new ZORStdPlyTable(GetContainer(), this);
        AddRow(tr("Plies:"), m_plies, m_plies);
        connect(m_plies, &ZORStdPlyTable::Changed, this, &Content::Check);
        Check();
    }

    void Apply() override
    {
        ZORStdCreation creation;
        auto* const layup = new ZORCompLayup(GetFolder(creation));
        layup->SetSurface(ZORFeatShapeOf<ZORGeoSurface>(m_surfaceCombo->GetObject()));
        layup->SetRosette(m_rosetteCombo->Get<ZORCompRosette>());
        creation.Add(layup, GetLabel());
        auto* const sequence = creation.Add(new ZORCompSequence(layup), tr("Sequence %1").arg(1));
        int number = 0;
        for (const ZORStdPlyModel::Ply& row : m_plies->GetModel().GetPlies()) {
            auto* const ply = new ZORCompPly(sequence);
            ply->SetMaterial(row.material);
            ply->SetAngle(row.angle);
            creation.Add(ply, tr("Ply %1").arg(++number));
        }
        creation.Keep();
    }

protected:
    QString FindProblem() const override
    {
        const QString problem = FindLabelProblem();
        return problem.isEmpty() ? m_plies->GetModel().FindProblem() : problem;
    }

private:
    ZORStdObjectCombo* m_surfaceCombo = nullptr;
    ZORStdObjectCombo* m_rosetteCombo = nullptr;
    ZORStdPlyTable* m_plies = nullptr;
};

} // namespace

ZORCompLayupCmd::ZORCompLayupCmd(QObject* parent)
    : ZORStdDialogCommand(parent)
{
}

ZORStdContent* ZORCompLayupCmd::MakeContent(ZORFeatEnvironment* environment, QWidget* parent) const
{
    return new Content(environment, parent);
}
