#include "ZORNestSourceProviders_p.h"
#include "drawing/ZORNestDrawing_p.h"
#include "drawing/ZORNestPartFinder_p.h"
#include "drawing/ZORNestPartResult_p.h"
#include "formats/ZORNestContourXml_p.h"
#include "formats/ZORNestDxfReader_p.h"
#include "formats/ZORNestInstance_p.h"
#include "formats/ZORNestSvgReader_p.h"

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QCoreApplication>
#include <QFileInfo>

namespace {

constexpr qint64 kMegabyte = 1 << 20;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestSourceProviders)
};

// The whole of a file of bounded size.
QByteArray ReadFile(const QString& path, qint64 maximumMegabytes)
{
    ZORSysFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(path, file.errorString());
    if (file.size() > maximumMegabytes * kMegabyte)
        throw ZORSysFileException(Texts::tr("file is larger than %1 MB").arg(maximumMegabytes));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw ZORSysFileException(Texts::tr("cannot read the file: %1").arg(file.errorString()));
    return bytes;
}

QList<ZORNestResult> MakeResults(const QList<ZORNestPart>& parts)
{
    QList<ZORNestResult> results;
    for (const ZORNestPart& part : parts)
        results.append(ZORNestMakePartResult(part));
    return results;
}

// One reader of drawings that may hold several parts.
template<class Reader>
QList<ZORNestResult> TranslateDrawing(const QString& path, qint64 maximumMegabytes,
                                      const ZORNestTranslationInput& input, const ZORWorkContext& context,
                                      QStringList& report)
{
    const QByteArray bytes = ReadFile(path, maximumMegabytes);
    ZORNestDrawing drawing(input.GetCurveTolerance(), context);
    Reader(bytes, drawing, report, context).Read();
    return MakeResults(ZORNestPartFinder::FindParts(drawing, input.GetJoinTolerance(),
                                                    QFileInfo(path).completeBaseName(), report, context));
}

// An outline with its holes that the source says to be one part.
ZORNestPart MakeSinglePart(ZORNestDrawing& drawing, const QString& name, QStringList& report,
                           const ZORWorkContext& context)
{
    const QList<ZORNestPart> parts = ZORNestPartFinder::FindParts(drawing, 0, name, report, context);
    if (parts.size() > 1)
        throw ZORSysException(Texts::tr("part '%1' has more than one outline").arg(name));
    return parts.constFirst();
}

class DxfProvider final : public ZORNestSourceProvider
{
public:
    DxfProvider()
        : ZORNestSourceProvider("dxf")
    {
    }
    QString GetDisplayName() const override { return Texts::tr("DXF drawing"); }
    QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& input,
                                   const ZORWorkContext& context, QStringList* report) const override
    {
        return TranslateDrawing<ZORNestDxfReader>(path, 1024, input, context, *report);
    }
};

class SvgProvider final : public ZORNestSourceProvider
{
public:
    SvgProvider()
        : ZORNestSourceProvider("svg")
    {
    }
    QString GetDisplayName() const override { return Texts::tr("SVG drawing"); }
    QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& input,
                                   const ZORWorkContext& context, QStringList* report) const override
    {
        return TranslateDrawing<ZORNestSvgReader>(path, 256, input, context, *report);
    }
};

class ContourProvider final : public ZORNestSourceProvider
{
public:
    ContourProvider()
        : ZORNestSourceProvider("contour-xml")
    {
    }
    QString GetDisplayName() const override { return Texts::tr("Contours (XML)"); }
    QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& input,
                                   const ZORWorkContext& context, QStringList* report) const override;
};

QList<ZORNestResult> ContourProvider::Translate(const QString& path, const ZORNestTranslationInput& input,
                                                const ZORWorkContext& context, QStringList* report) const
{
    const QList<ZORNestContourXml::Contour> contours = ZORNestContourXml::Read(ReadFile(path, 256));
    QList<ZORNestPart> parts;
    for (qsizetype i = 0; i < contours.size(); ++i) {
        const ZORNestContourXml::Contour& contour = contours[i];
        const QStringList names = contour.name.split(u'/', Qt::SkipEmptyParts);
        const QString name = names.isEmpty()
                                 ? QFileInfo(path).completeBaseName() + u'-' + QString::number(i + 1)
                                 : names.constLast();
        ZORNestDrawing drawing(input.GetCurveTolerance(), context);
        drawing.BeginChain({}, {});
        for (qsizetype k = 0; k < contour.points.size(); ++k)
            drawing.AddLine(contour.points[k], contour.points[(k + 1) % contour.points.size()]);
        if (!drawing.EndChain(name))
            throw ZORSysException(Texts::tr("contour '%1' has no extent, or is out of range").arg(name));
        if (contour.zMin != contour.zMax)
            report->append(Texts::tr("flattened: '%1', whose heights reach from %2 to %3")
                               .arg(name, QString::number(contour.zMin), QString::number(contour.zMax)));
        parts.append(MakeSinglePart(drawing, name, *report, context));
        parts.last().assembly = names.mid(0, names.size() - 1).join(u'/');
    }
    if (parts.isEmpty())
        throw ZORSysException(Texts::tr("no closed outline found"));
    return MakeResults(parts);
}

/// Draws a contour of an instance as one closed chain.
void DrawContour(const ZORNestSolver::Contour& contour, ZORNestDrawing& drawing)
{
    const auto toPlane = [](const ZORNestSolver::Point& p) { return ZORNestPlanePoint{p.x, p.y}; };
    const ZORNestPlanePoint first = toPlane(contour.start);
    ZORNestPlanePoint last = first;
    drawing.BeginChain({}, {});
    for (const ZORNestSolver::Segment& segment : contour.segments) {
        const ZORNestPlanePoint next = toPlane(segment.end);
        if (segment.isArc) {
            const ZORNestPiece arc{last, next, toPlane(segment.centre), segment.counterClockwise ? 1 : -1};
            const ZORNestPlanePoint u = last - arc.center;
            drawing.AddConic({arc.center, u, GetNormal(u), 0, arc.turn * arc.GetSweep()}, &last, &next);
        } else {
            drawing.AddLine(last, next);
        }
        last = next;
    }
    drawing.AddLine(last, first);
}

class JsonProvider final : public ZORNestSourceProvider
{
public:
    JsonProvider()
        : ZORNestSourceProvider("nesting-json")
    {
    }
    QString GetDisplayName() const override { return Texts::tr("Nesting benchmark (JSON)"); }
    QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& input,
                                   const ZORWorkContext& context, QStringList* report) const override;
};

QList<ZORNestResult> JsonProvider::Translate(const QString& path, const ZORNestTranslationInput& input,
                                             const ZORWorkContext& context, QStringList* report) const
{
    const ZORNestInstance instance =
        ZORNestInstance::Read(ReadFile(path, 128), ZORNestInstance::Purpose::Translation);
    const qsizetype numItems = instance.GetNumItems();
    QList<ZORNestPart> parts;
    for (qsizetype i = 0; i < numItems; ++i) {
        const QString name = instance.GetItemName(i);
        ZORNestDrawing drawing(input.GetCurveTolerance(), context);
        for (const ZORNestSolver::Contour& contour : instance.GetData().job.items[size_t(i)].contours) {
            DrawContour(contour, drawing);
            if (!drawing.EndChain(QStringLiteral("outline")))
                throw ZORSysException(
                    Texts::tr("item '%1': outline without extent, or out of range").arg(name));
        }
        if (i + 1 == numItems && !instance.GetFault().isEmpty())
            throw ZORSysException(Texts::tr("item '%1': %2").arg(name, instance.GetFault()));
        parts.append(MakeSinglePart(drawing, name, *report, context));
        parts.last().assembly = QFileInfo(path).completeBaseName();
    }
    if (parts.isEmpty())
        throw ZORSysException(Texts::tr("no closed outline found"));
    return MakeResults(parts);
}

} // namespace

std::vector<std::unique_ptr<ZORNestSourceProvider>> ZORNestMakeSourceProviders()
{
    std::vector<std::unique_ptr<ZORNestSourceProvider>> providers;
    providers.push_back(std::make_unique<DxfProvider>());
    providers.push_back(std::make_unique<SvgProvider>());
    providers.push_back(std::make_unique<ContourProvider>());
    providers.push_back(std::make_unique<JsonProvider>());
    return providers;
}
