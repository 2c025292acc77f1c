#include "ZORCompStrategyCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <QComboBox>
#include <QCoreApplication>

#include <cmath>
#include <limits>
#include <memory>

namespace {

// A message of the SDK as a sentence.
QString ToSentence(const QString& message)
{
    return message.left(1).toUpper() + message.mid(1) + u'.';
}

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompStrategyCmd)

public:
    Content(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
        : ZORStdContent(environment, edited, parent)
    {
        const auto* const strategy = GetEdited<ZORCompStrategy>();
        const ZORCompStrategyParameters shown =
            strategy ? strategy->GetParameters() : ZORCompStrategyParameters();
        AddLabel(tr("Strategy"));
        // In the order of their codes.
        m_generatorsCombo = AddChoice("_GeneratorsCombo", tr("&Yarns through the seed:"),
                                      {tr("Geodesic"), tr("Constant angle")});
        m_generatorsCombo->setCurrentIndex(int(shown.generators));
        m_stepSpin = AddNumber("_StepSpin", tr("Ste&p:"), "Length", shown.step);
        m_fibreAngleSpin = AddNumber("_FibreAngleSpin", tr("Fibre &angle:"), "Angle", shown.fibreAngle);
        m_yarnAngleSpin = AddNumber("_YarnAngleSpin", tr("Ya&rn angle:"), "Angle", shown.yarnAngle);
        m_lockingAngleSpin =
            AddNumber("_LockingAngleSpin", tr("Lock&ing angle:"), "Angle", shown.lockingAngle);
        m_warpExtentSpin = AddExtent("_WarpExtentSpin", tr("Extent along the &warp:"), shown.warpExtent);
        m_weftExtentSpin = AddExtent("_WeftExtentSpin", tr("&Extent along the weft:"), shown.weftExtent);
        AddFolder();
        if (!IsEditing())
            AddLayerRows();
        Check();
    }

protected:
    void Create() override
    {
        ZORStdCreation creation;
        auto* const strategy = new ZORCompStrategy(GetFolder(creation));
        strategy->SetParameters(GetParameters());
        creation.Add(strategy, GetLabel());
        if (IsDraped())
            AddLayer(creation, strategy);
        creation.Keep();
    }

    void Change() override
    {
        auto* const strategy = GetEdited<ZORCompStrategy>();
        if (!(strategy->GetParameters() == GetParameters())) // its layers are draped again
            strategy->SetParameters(GetParameters());
    }
    void UpdateRows() override
    {
        if (IsEditing())
            return;
        for (QWidget* row : std::initializer_list<QWidget*>{m_seedCombo, m_rosetteCombo, m_direction.row})
            SetRowVisible(row, IsDraped());
        m_direction.row->setEnabled(!m_rosetteCombo->GetObject());
    }
    QString FindProblem() const override
    {
        try {
            GetParameters().Check();
        } catch (const ZORSysException& exception) {
            return ToSentence(exception.GetMessage());
        }
        if (IsDraped()) {
            if (!m_seedCombo->GetObject())
                return tr("Choose the point where draping starts.");
            if (!m_rosetteCombo->GetObject() && m_direction.GetVector().GetLength() == 0)
                return tr("The direction has no length.");
        }
        return FindLabelProblem();
    }

private:
    void AddLayerRows()
    {
        m_surfaceCombo = AddSurfaces("_SurfaceCombo", tr("&Drape a surface:"), tr("None"));
        m_seedCombo = AddPoints("_SeedCombo", tr("&Seed:"));
        m_rosetteCombo = AddRosettes(tr("Rose&tte:"));
        m_direction = AddTriple(QLatin1String("_Direction"), tr("Directio&n:"), "", {1, 0, 0});
    }
    bool IsDraped() const { return m_surfaceCombo && m_surfaceCombo->GetObject(); }
    void AddLayer(ZORStdCreation& creation, ZORCompStrategy* strategy) const
    {
        auto layer = std::make_unique<ZORCompDrapingLayer>(strategy->GetParentFeature());
        layer->SetStrategy(strategy);
        layer->SetSurface(m_surfaceCombo->GetObject());
        layer->SetSeed(m_seedCombo->GetObject());
        layer->SetRosette(m_rosetteCombo->Get<ZORCompRosette>());
        layer->SetDirection(m_direction.GetVector());
        creation.Add(layer.release(), ZORStdUniqueLabel(*GetContainer(), tr("Layer")));
    }
    ZORCmnUnitSpinBox* AddExtent(const char* objectName, const QString& text, double extent)
    {
        ZORCmnUnitSpinBox* const spin =
            AddNumber(objectName, text, "Length", std::isfinite(extent) ? extent : 0);
        spin->setMinimum(0);
        spin->setSpecialValueText(tr("No bound"));
        return spin;
    }
    static double GetExtent(const ZORCmnUnitSpinBox* spin)
    {
        const double extent = spin->GetInternalValue();
        return extent > 0 ? extent : std::numeric_limits<double>::infinity();
    }
    ZORCompStrategyParameters GetParameters() const
    {
        ZORCompStrategyParameters parameters;
        parameters.generators = ZORCompStrategyParameters::Generators(m_generatorsCombo->currentIndex());
        parameters.step = m_stepSpin->GetInternalValue();
        parameters.fibreAngle = m_fibreAngleSpin->GetInternalValue();
        parameters.yarnAngle = m_yarnAngleSpin->GetInternalValue();
        parameters.lockingAngle = m_lockingAngleSpin->GetInternalValue();
        parameters.warpExtent = GetExtent(m_warpExtentSpin);
        parameters.weftExtent = GetExtent(m_weftExtentSpin);
        return parameters;
    }

    QComboBox* m_generatorsCombo = nullptr;
    ZORCmnUnitSpinBox* m_stepSpin = nullptr;
    ZORCmnUnitSpinBox* m_fibreAngleSpin = nullptr;
    ZORCmnUnitSpinBox* m_yarnAngleSpin = nullptr;
    ZORCmnUnitSpinBox* m_lockingAngleSpin = nullptr;
    ZORCmnUnitSpinBox* m_warpExtentSpin = nullptr;
    ZORCmnUnitSpinBox* m_weftExtentSpin = nullptr;
    ZORStdObjectCombo* m_surfaceCombo = nullptr; // null object: no layer
    ZORStdObjectCombo* m_seedCombo = nullptr;
    ZORStdObjectCombo* m_rosetteCombo = nullptr;
    Triple m_direction;
};

} // namespace

ZORCompStrategyCmd::ZORCompStrategyCmd(QObject* parent)
    : ZORStdDialogCommand(parent, tr("Edit Draping Strategy"))
{
}

ZORStdContent* ZORCompStrategyCmd::MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                               QWidget* parent) const
{
    return new Content(environment, edited, parent);
}
