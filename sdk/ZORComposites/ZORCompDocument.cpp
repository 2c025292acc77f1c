#include "ZORCompDocument.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

namespace {

using Document = ZORCompDocument;

struct Checker
{
    const Document& document;

    static void CheckIndex(int index, qsizetype count, const QString& message)
    {
        if (index < -1 || index >= count)
            throw ZORSysException(message.arg(index));
    }
    void CheckLayup(int index) const
    {
        CheckIndex(index, document.layups.size(), ZORCompDocument::tr("there is no layup %1"));
    }
    void CheckRosette(int index) const
    {
        CheckIndex(index, document.rosettes.size(), ZORCompDocument::tr("there is no rosette %1"));
    }

    void Check(const Document::Material& material) const { material.properties.Check(); }
    void Check(const Document::Rosette& rosette) const
    {
        CheckLayup(rosette.layup);
        ZORCompRosette(nullptr, rosette.origin, rosette.xAxis, rosette.normal);
    }
    void Check(const Document::Contour& contour) const
    {
        CheckLayup(contour.layup);
        ZORGeoPolyline(nullptr, contour.points, true);
    }
    void Check(const Document::Layup& layup) const
    {
        CheckRosette(layup.rosette);
        for (const Document::Component& sequence : layup.sequences) {
            if (sequence.kind != Document::Component::Sequence)
                throw ZORSysException(ZORCompDocument::tr("a layup has no plies of its own"));
            Check(sequence, 1);
        }
    }
    void Check(const Document::Component& component, int depth) const
    {
        CheckRosette(component.rosette);
        if (component.kind == Document::Component::Ply) {
            CheckPly(component);
            return;
        }
        if (depth > Document::MaximumDepth)
            throw ZORSysException(Document::DescribeTooDeep());
        for (const Document::Component& inner : component.components)
            Check(inner, depth + 1);
    }
    void CheckPly(const Document::Component& ply) const
    {
        CheckIndex(ply.material, document.materials.size(), ZORCompDocument::tr("there is no material %1"));
        if (!std::isfinite(ply.angle))
            throw ZORSysException(ZORCompDocument::tr("the angle is not finite"));
        for (const int boundary : ply.boundaries) {
            CheckIndex(boundary < 0 ? int(document.contours.size()) : boundary, document.contours.size(),
                       ZORCompDocument::tr("there is no contour %1"));
        }
        if (!ply.components.isEmpty())
            throw ZORSysException(ZORCompDocument::tr("a ply has no components"));
    }

    template<class Part>
    void CheckAll(const QList<Part>& parts, const QString& kind) const
    {
        for (int i = 0; i < parts.size(); ++i) {
            try {
                Check(parts.at(i));
            } catch (const ZORSysException& exception) {
                throw ZORSysException(
                    ZORCompDocument::tr("%1 %2: %3").arg(kind, QString::number(i), exception.GetMessage()));
            }
        }
    }
};

} // namespace

void ZORCompDocument::Check() const
{
    const Checker checker{*this};
    checker.CheckAll(materials, tr("material"));
    checker.CheckAll(rosettes, tr("rosette"));
    checker.CheckAll(contours, tr("contour"));
    checker.CheckAll(layups, tr("layup"));
}

QString ZORCompDocument::DescribeTooDeep()
{
    return tr("sequences are nested more than %1 deep").arg(MaximumDepth);
}
