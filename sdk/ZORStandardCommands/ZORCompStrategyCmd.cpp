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
    Content(ZORFeatEnvironment* environment, QWidget* parent)
        : ZORStdContent(environment, parent)
    {
        const ZORCompStrategyParameters defaults;
        AddLabel(ZORStdUniqueLabel(*GetContainer(), tr("Strategy")));
        // In the order of their codes.
        m_generatorsCombo = AddChoice("_GeneratorsCombo", tr("Yarns through the seed:"),
                                      {tr("Geodesic"), tr("Constant angle")});
        m_stepSpin = AddNumber("_StepSpin", tr("Step:"), "Length", defaults.step);
        m_fibreAngleSpin = AddNumber("_FibreAngleSpin", tr("Fibre angle:"), "Angle", defaults.fibreAngle);
        m_yarnAngleSpin = AddNumber("_YarnAngleSpin", tr("Yarn angle:"), "Angle", defaults.yarnAngle);
        m_lockingAngleSpin =
            AddNumber("_LockingAngleSpin", tr("Locking angle:"), "Angle", defaults.lockingAngle);
        m_warpExtentSpin = AddExtent("_WarpExtentSpin", tr("Extent along the warp:"));
        m_weftExtentSpin = AddExtent("_WeftExtentSpin", tr("Extent along the weft:"));
        AddFolder();
        AddLayerRows();
        Check();
    }

    void Apply() override
    {
        ZORStdCreation creation;
        auto* const strategy = new ZORCompStrategy(GetFolder(creation));
        strategy->SetParameters(GetParameters());
        creation.Add(strategy, GetLabel());
        if (m_surfaceCombo->GetObject())
            AddLayer(creation, strategy);
        creation.Keep();
    }

protected:
    void UpdateRows() override
    {
        const bool isDraped = m_surfaceCombo->GetObject();
        for (QWidget* row : std::initializer_list<QWidget*>{m_seedCombo, m_rosetteCombo, m_direction.row})
            SetRowVisible(row, isDraped);
        m_direction.row->setEnabled(!m_rosetteCombo->GetObject());
    }
    QString FindProblem() const override
    {
        try {
            GetParameters().Check();
        } catch (const ZORSysException& exception) {
            return ToSentence(exception.GetMessage());
        }
        if (m_surfaceCombo->GetObject()) {
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
        using Combo = ZORStdObjectCombo;
        m_surfaceCombo = AddObjects("_SurfaceCombo", tr("Drape a surface:"),
                                    Combo::ShapeFilter(Combo::Surfaces), tr("None"));
        m_seedCombo = AddObjects("_SeedCombo", tr("Seed:"), Combo::ShapeFilter(Combo::Points));
        m_rosetteCombo =
            AddObjects("_RosetteCombo", tr("Rosette:"), Combo::ClassFilter<ZORCompRosette>(), tr("None"));
        m_direction = AddTriple(QLatin1String("_Direction"), tr("Direction:"), "", {1, 0, 0});
    }
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
    ZORCmnUnitSpinBox* AddExtent(const char* objectName, const QString& text)
    {
        ZORCmnUnitSpinBox* const spin = AddNumber(objectName, text, "Length", 0);
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
    : ZORStdDialogCommand(parent)
{
}

ZORStdContent* ZORCompStrategyCmd::MakeContent(ZORFeatEnvironment* environment, QWidget* parent) const
{
    return new Content(environment, parent);
}
