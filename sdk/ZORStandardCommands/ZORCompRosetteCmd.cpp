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
    Content(ZORFeatEnvironment* environment, QWidget* parent)
        : ZORStdContent(environment, parent)
    {
        using Combo = ZORStdObjectCombo;
        AddLabel(ZORStdUniqueLabel(*GetContainer(), tr("Rosette")));
        m_originCombo =
            AddObjects("_OriginCombo", tr("Origin:"), Combo::ShapeFilter(Combo::Points), tr("Coordinates"));
        m_origin = AddTriple(QLatin1String("_Origin"), tr("Coordinates:"), "Length", {0, 0, 0});
        m_xAxis = AddTriple(QLatin1String("_XAxis"), tr("X direction:"), "", {1, 0, 0});
        m_surfaceCombo =
            AddObjects("_SurfaceCombo", tr("Surface:"), Combo::ShapeFilter(Combo::Surfaces), tr("None"));
        m_normal = AddTriple(QLatin1String("_Normal"), tr("Normal:"), "", {0, 0, 1});
        AddFolder();
        Check();
    }

    void Apply() override
    {
        const auto* const surface = ZORFeatShapeOf<ZORGeoSurface>(m_surfaceCombo->GetObject());
        const ZORMathVector xAxis = m_xAxis.GetVector();
        ZORStdCreation creation;
        auto rosette = std::make_unique<ZORCompRosette>(GetFolder(creation), GetOrigin(), xAxis,
                                                        surface ? GetAnyNormal(xAxis) : m_normal.GetVector());
        rosette->SetSurface(surface);
        creation.Add(rosette.release(), GetLabel());
        creation.Keep();
    }

protected:
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
    // The surface gives the normal in the end.
    static ZORMathVector GetAnyNormal(const ZORMathVector& xAxis)
    {
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
    : ZORStdDialogCommand(parent)
{
}

ZORStdContent* ZORCompRosetteCmd::MakeContent(ZORFeatEnvironment* environment, QWidget* parent) const
{
    return new Content(environment, parent);
}
