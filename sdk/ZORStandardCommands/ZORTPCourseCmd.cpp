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

enum Method { AlongCurve, FromPoint, Unchanged };

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORTPCourseCmd)

public:
    Content(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
        : ZORStdContent(environment, edited, parent)
    {
        const auto* const course = GetEdited<ZORTPCourse>();
        AddLabel(tr("Course"));
        m_surfaceCombo = AddObjects("_SurfaceCombo", tr("&Surface:"), MakeSurfaceFilter(), {},
                                    {ZORCmdPickRequest::Surfaces, tr("Click a surface in the view")});
        QStringList methods{tr("Along a curve"), tr("From a point in a direction")};
        if (course)
            methods.append(tr("As it is"));
        m_methodCombo = AddChoice("_MethodCombo", tr("C&entre line:"), methods);
        AddCenterLineRows();
        m_widthSpin = AddNumber("_WidthSpin", tr("&Width:"), "Length", course ? course->GetWidth() : 10);
        AddFolder();
        connect(m_surfaceCombo, &ZORStdObjectCombo::ObjectChanged, this,
                [this] { m_curveCombo->SetFilter(MakeCurveFilter()); });
        if (course)
            m_methodCombo->setCurrentIndex(Unchanged);
        Check();
    }

protected:
    void Create() override
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

    void Change() override
    {
        auto* const course = GetEdited<ZORTPCourse>();
        const int method = m_methodCombo->currentIndex();
        if (method != Unchanged)
            course->SetCenterLine(method == AlongCurve ? GetCurve()->GetLocations() : ComputeCenterLine());
        course->SetWidth(m_widthSpin->GetInternalValue());
    }
    void UpdateRows() override
    {
        const int method = m_methodCombo->currentIndex();
        SetRowVisible(m_curveCombo, method == AlongCurve);
        for (QWidget* row :
             std::initializer_list<QWidget*>{m_pointCombo, m_direction.row, m_lengthSpin, m_bothWaysChk})
            SetRowVisible(row, method == FromPoint);
        m_surfaceCombo->setEnabled(!IsEditing());
    }
    QString FindProblem() const override
    {
        const QString problem = FindCenterLineProblem();
        if (!problem.isEmpty())
            return problem;
        return m_widthSpin->GetInternalValue() > 0 ? FindLabelProblem()
                                                   : tr("The width must be more than 0.");
    }

private:
    void AddCenterLineRows()
    {
        m_curveCombo =
            AddObjects("_CurveCombo", tr("C&urve:"), MakeCurveFilter(), {},
                       {ZORCmdPickRequest::Curves, tr("Click a curve on the surface in the view")});
        m_pointCombo = AddPoints("_PointCombo", tr("Start &point:"));
        m_direction = AddTriple(QLatin1String("_Direction"), tr("&Direction:"), "", {1, 0, 0});
        m_lengthSpin = AddNumber("_LengthSpin", tr("Len&gth:"), "Length", 0);
        m_lengthSpin->setMinimum(0);
        m_lengthSpin->setSpecialValueText(tr("To the border"));
        m_bothWaysChk = new QCheckBox(tr("&Both ways from the point"), this);
        m_bothWaysChk->setObjectName(QLatin1String("_BothWaysChk"));
        AddRow({}, m_bothWaysChk, nullptr);
    }
    QString FindCenterLineProblem() const
    {
        const int method = m_methodCombo->currentIndex();
        if (method == Unchanged)
            return {};
        if (!m_surfaceCombo->GetObject())
            return tr("Choose the surface that the course is laid on.");
        if (method == AlongCurve)
            return GetCurve() ? QString() : tr("Choose a curve on the surface.");
        if (!m_pointCombo->GetObject())
            return tr("Choose the start point.");
        return m_direction.GetVector().GetLength() == 0 ? tr("The direction has no length.") : QString();
    }
    // A course stays on its surface.
    ZORStdObjectCombo::Filter MakeSurfaceFilter() const
    {
        const auto isSurface = ZORStdObjectCombo::ShapeFilter(ZORStdObjectCombo::Surfaces);
        const auto* const course = GetEdited<ZORTPCourse>();
        if (!course)
            return isSurface;
        const QPointer<const ZORGeoSurface> surface = course->GetSurface();
        return [surface, isSurface](const ZORGeoGeometry& object) {
            return surface && isSurface(object) && ZORFeatShapeOf(&object) == surface;
        };
    }
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
        const QPointer<const ZORTPCourse> edited = GetEdited<ZORTPCourse>();
        const auto isCurve = ZORStdObjectCombo::ShapeFilter(ZORStdObjectCombo::Curves);
        return [surface, edited, isCurve](const ZORGeoGeometry& object) {
            const auto* const curve = ZORFeatShapeOf<ZORGeoCurveOnSurface>(&object);
            return surface && curve && curve->GetSurface() == surface && isCurve(object) && &object != edited;
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
    : ZORStdDialogCommand(parent, tr("Edit Course"))
{
}

ZORStdContent* ZORTPCourseCmd::MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                           QWidget* parent) const
{
    return new Content(environment, edited, parent);
}
