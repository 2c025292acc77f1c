#include "ZORTPCourseCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORToolPath/ZORTPCourse.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>

#include <limits>

namespace {

enum Method { AlongCurve, FromPoint };

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORTPCourseCmd)

public:
    Content(ZORFeatEnvironment* environment, QWidget* parent)
        : ZORStdContent(environment, parent)
    {
        using Combo = ZORStdObjectCombo;
        AddLabel(ZORStdUniqueLabel(*GetContainer(), tr("Course")));
        m_surfaceCombo = AddObjects("_SurfaceCombo", tr("Surface:"), Combo::ShapeFilter(Combo::Surfaces));
        m_methodCombo = AddChoice("_MethodCombo", tr("Centre line:"),
                                  {tr("Along a curve"), tr("From a point in a direction")});
        m_curveCombo = AddObjects("_CurveCombo", tr("Curve:"), MakeCurveFilter());
        m_pointCombo = AddObjects("_PointCombo", tr("Start point:"), Combo::ShapeFilter(Combo::Points));
        m_direction = AddTriple(QLatin1String("_Direction"), tr("Direction:"), "", {1, 0, 0});
        m_lengthSpin = AddNumber("_LengthSpin", tr("Length:"), "Length", 0);
        m_lengthSpin->setMinimum(0);
        m_lengthSpin->setSpecialValueText(tr("To the border"));
        m_bothWaysChk = new QCheckBox(tr("Both ways from the point"), this);
        m_bothWaysChk->setObjectName(QLatin1String("_BothWaysChk"));
        AddRow({}, m_bothWaysChk, nullptr);
        m_widthSpin = AddNumber("_WidthSpin", tr("Width:"), "Length", 10);
        AddFolder();
        connect(m_surfaceCombo, &Combo::ObjectChanged, this,
                [this] { m_curveCombo->SetFilter(MakeCurveFilter()); });
        Check();
    }

    void Apply() override
    {
        ZORStdCreation creation;
        ZORFeatObject* const folder = GetFolder(creation);
        const double width = m_widthSpin->GetInternalValue();
        creation.Add(m_methodCombo->currentIndex() == AlongCurve
                         ? new ZORTPCourse(folder, GetCurve(), width)
                         : new ZORTPCourse(folder, ComputeCenterLine(), width),
                     GetLabel());
        creation.Keep();
    }

protected:
    void UpdateRows() override
    {
        const bool isAlongCurve = m_methodCombo->currentIndex() == AlongCurve;
        SetRowVisible(m_curveCombo, isAlongCurve);
        for (QWidget* row :
             std::initializer_list<QWidget*>{m_pointCombo, m_direction.row, m_lengthSpin, m_bothWaysChk})
            SetRowVisible(row, !isAlongCurve);
    }
    QString FindProblem() const override
    {
        if (!m_surfaceCombo->GetObject())
            return tr("Choose the surface that the course is laid on.");
        if (m_methodCombo->currentIndex() == AlongCurve) {
            if (!GetCurve())
                return tr("Choose a curve on the surface.");
        } else if (!m_pointCombo->GetObject()) {
            return tr("Choose the start point.");
        } else if (m_direction.GetVector().GetLength() == 0) {
            return tr("The direction has no length.");
        }
        return m_widthSpin->GetInternalValue() > 0 ? FindLabelProblem()
                                                   : tr("The width must be more than 0.");
    }

private:
    const ZORGeoSurface* GetSurface() const
    {
        return ZORFeatShapeOf<ZORGeoSurface>(m_surfaceCombo->GetObject());
    }
    const ZORGeoCurveOnSurface* GetCurve() const
    {
        return ZORFeatShapeOf<ZORGeoCurveOnSurface>(m_curveCombo->GetObject());
    }
    ZORStdObjectCombo::Filter MakeCurveFilter() const
    {
        const QPointer<const ZORGeoSurface> surface = GetSurface();
        const auto isCurve = ZORStdObjectCombo::ShapeFilter(ZORStdObjectCombo::Curves);
        return [surface, isCurve](const ZORGeoGeometry& object) {
            const auto* const curve = ZORFeatShapeOf<ZORGeoCurveOnSurface>(&object);
            return surface && curve && curve->GetSurface() == surface && isCurve(object);
        };
    }
    QList<ZORGeoLocationOnSurface> ComputeCenterLine() const
    {
        const ZORGeoSurface* const surface = GetSurface();
        const auto* const point = ZORFeatShapeOf<ZORGeoPoint>(m_pointCombo->GetObject());
        if (!surface || !point)
            throw ZORSysException(tr("the surface or the start point has no geometry any more"));
        const ZORGeoLocationOnSurface start = ZORGeoOnSurface::Locate(*point, *surface);
        const double length = m_lengthSpin->GetInternalValue();
        const double ahead = length > 0 ? length : std::numeric_limits<double>::infinity();
        const QList<ZORGeoLocationOnSurface> line =
            ZORGeoCurveOnSurfaceProcessor(surface, m_bothWaysChk->isChecked() ? ahead : 0, ahead)
                .ComputeGeodesic(start, m_direction.GetVector(), 0)
                .GetLocations();
        if (line.size() < 2)
            throw ZORSysException(tr("the surface ends at the start point in this direction"));
        return line;
    }

    ZORStdObjectCombo* m_surfaceCombo = nullptr;
    QComboBox* m_methodCombo = nullptr;
    ZORStdObjectCombo* m_curveCombo = nullptr;
    ZORStdObjectCombo* m_pointCombo = nullptr;
    Triple m_direction;
    ZORCmnUnitSpinBox* m_lengthSpin = nullptr;
    QCheckBox* m_bothWaysChk = nullptr;
    ZORCmnUnitSpinBox* m_widthSpin = nullptr;
};

} // namespace

ZORTPCourseCmd::ZORTPCourseCmd(QObject* parent)
    : ZORStdDialogCommand(parent)
{
}

ZORStdContent* ZORTPCourseCmd::MakeContent(ZORFeatEnvironment* environment, QWidget* parent) const
{
    return new Content(environment, parent);
}
