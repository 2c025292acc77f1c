#include "ZORCompLayupCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"
#include "ZORStdPlyChange.h"
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
    Content(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
        : ZORStdContent(environment, edited, parent)
    {
        const auto* const layup = GetEdited<ZORCompLayup>();
        AddLabel(tr("Layup"));
        m_surfaceCombo = AddSurfaces("_SurfaceCombo", tr("&Surface:"), tr("None"));
        m_rosetteCombo = AddRosettes(tr("Rosett&e:"));
        AddCreator(m_rosetteCombo, "_NewRosetteBtn", "ZORCompRosetteCmd.Create");
        AddFolder();
        m_plies = new ZORStdPlyTable(GetContainer(), this);
        AddRow(tr("&Plies:"), m_plies, m_plies);
        if (layup) {
            m_surfaceCombo->Select(m_surfaceCombo->Find(layup->GetSurface()));
            m_rosetteCombo->Select(layup->GetRosette());
            for (ZORCompPly* ply : layup->GetPlies())
                m_originals.append(ply);
            m_plies->SetPlies(layup->GetPlies());
        }
        connect(m_plies, &ZORStdPlyTable::Changed, this, &Content::Check);
        Check();
    }

protected:
    void Create() override
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

    void Change() override
    {
        auto* const layup = GetEdited<ZORCompLayup>();
        ZORStdPlyChange(*layup, m_originals, m_plies->GetModel().GetPlies()).Apply();
        layup->SetSurface(ZORFeatShapeOf<ZORGeoSurface>(m_surfaceCombo->GetObject()));
        layup->SetRosette(m_rosetteCombo->Get<ZORCompRosette>());
    }
    QString FindProblem() const override
    {
        const QString problem = FindLabelProblem();
        return problem.isEmpty() ? m_plies->GetModel().FindProblem() : problem;
    }

private:
    ZORStdObjectCombo* m_surfaceCombo = nullptr;
    ZORStdObjectCombo* m_rosetteCombo = nullptr;
    ZORStdPlyTable* m_plies = nullptr;
    ZORStdPlyChange::Plies m_originals; // of the edited layup when the dialog was opened
};

} // namespace

ZORCompLayupCmd::ZORCompLayupCmd(QObject* parent)
    : ZORStdDialogCommand(parent, tr("Edit Layup"))
{
}

ZORStdContent* ZORCompLayupCmd::MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                            QWidget* parent) const
{
    return new Content(environment, edited, parent);
}
