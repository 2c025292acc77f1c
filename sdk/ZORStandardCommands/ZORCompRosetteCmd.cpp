#include "ZORCompRosetteCmd.h"

#include "ZORStdContent.h"
#include "ZORStdObjects.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

#include <QCoreApplication>

#include <memory>

namespace {

bool IsParallel(const ZORMathVector& a, const ZORMathVector& b)
{
    return Cross(a, b).GetLength() <= 1e-9 * a.GetLength() * b.GetLength();
}

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompRosetteCmd)

public:
    Content(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
        : ZORStdContent(environment, edited, parent)
    {
        const auto* const rosette = GetEdited<ZORCompRosette>();
        AddLabel(tr("Rosette"));
        m_originCombo = AddPoints("_OriginCombo", tr("Ori&gin:"), tr("Coordinates"));
        m_origin = AddTriple(QLatin1String("_Origin"), tr("Coordinat&es:"), "Length",
                             rosette ? rosette->GetGivenOrigin() - ZORMathPoint() : ZORMathVector());
        AddPointPicker(m_origin, QLatin1String("_OriginPointBtn"));
        m_xAxis = AddTriple(QLatin1String("_XAxis"), tr("&X direction:"), "",
                            rosette ? rosette->GetGivenXAxis() : ZORMathVector(1, 0, 0));
        m_surfaceCombo = AddSurfaces("_SurfaceCombo", tr("&Surface:"), tr("None"));
        m_normal = AddTriple(QLatin1String("_Normal"), tr("&Normal:"), "",
                             rosette ? rosette->GetGivenNormal() : ZORMathVector(0, 0, 1));
        AddFolder();
        if (rosette)
            m_surfaceCombo->Select(m_surfaceCombo->Find(rosette->GetSurface()));
        Check();
    }

protected:
    void Create() override
    {
        const auto* const surface = ZORFeatShapeOf<ZORGeoSurface>(m_surfaceCombo->GetObject());
        const ZORMathVector xAxis = m_xAxis.GetVector();
        ZORStdCreation creation;
        auto rosette =
            std::make_unique<ZORCompRosette>(GetFolder(creation), GetOrigin(), xAxis, GetNormal(xAxis));
        rosette->SetSurface(surface);
        creation.Add(rosette.release(), GetLabel());
        creation.Keep();
    }

    void Change() override
    {
        auto* const rosette = GetEdited<ZORCompRosette>();
        const ZORMathVector xAxis = m_xAxis.GetVector();
        const ZORMathVector normal = GetNormal(xAxis);
        const auto* const surface = ZORFeatShapeOf<ZORGeoSurface>(m_surfaceCombo->GetObject());
        const bool isSame = GetOrigin() == rosette->GetGivenOrigin() && xAxis == rosette->GetGivenXAxis()
                            && normal == rosette->GetGivenNormal() && surface == rosette->GetSurface();
        if (!isSame) // layers that follow the rosette are draped again
            rosette->SetAxes(GetOrigin(), xAxis, normal, surface);
    }
    void UpdateRows() override
    {
        m_origin.row->setEnabled(!m_originCombo->GetObject());
        m_normal.row->setEnabled(!m_surfaceCombo->GetObject());
    }
    QString FindProblem() const override
    {
        const bool isOnSurface = m_surfaceCombo->GetObject();
        const ZORMathVector xAxis = m_xAxis.GetVector();
        const ZORMathVector normal = m_normal.GetVector();
        if (xAxis.GetLength() == 0)
            return tr("The X direction has no length.");
        if (!isOnSurface && normal.GetLength() == 0)
            return tr("The normal has no length.");
        if (!isOnSurface && IsParallel(xAxis, normal))
            return tr("The X direction is parallel to the normal.");
        return FindLabelProblem();
    }

private:
    ZORMathPoint GetOrigin() const
    {
        const auto* const point = ZORFeatShapeOf<ZORGeoPoint>(m_originCombo->GetObject());
        return point ? point->GetMathPoint() : m_origin.GetPoint();
    }
    // On a surface any normal fits that is not along X: the surface gives it in the end.
    ZORMathVector GetNormal(const ZORMathVector& xAxis) const
    {
        const ZORMathVector normal = m_normal.GetVector();
        if (!m_surfaceCombo->GetObject() || !IsParallel(xAxis, normal))
            return normal;
        const ZORMathVector z(0, 0, 1);
        return IsParallel(xAxis, z) ? ZORMathVector(0, 1, 0) : z;
    }

    ZORStdObjectCombo* m_originCombo = nullptr;
    Triple m_origin;
    Triple m_xAxis;
    ZORStdObjectCombo* m_surfaceCombo = nullptr;
    Triple m_normal;
};

} // namespace

ZORCompRosetteCmd::ZORCompRosetteCmd(QObject* parent)
    : ZORStdDialogCommand(parent, tr("Edit Rosette"))
{
}

ZORStdContent* ZORCompRosetteCmd::MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                              QWidget* parent) const
{
    return new Content(environment, edited, parent);
}
