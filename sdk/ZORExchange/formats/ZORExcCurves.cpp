#include "ZORExcContent_p.h"

#include <ZORExchange/ZORExcImport.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoRange.h>
#include <ZORNesting/ZORNestContourReader.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileDevice>
#include <QPointer>

#include <algorithm>

namespace {

using zor::exc::Content;

/// Content that becomes polylines.
class CurvesContent : public Content
{
public:
    using Content::Content;

    void AddTo(ZORFeatContainer& container) override
    {
        std::vector<QPointer<ZORGeoPolyline>> added; // receivers of the container's signals may remove them
        try {
            for (const Curve& curve : m_curves) {
                auto polyline = std::make_unique<ZORGeoPolyline>(&container, curve.points, true);
                polyline->setObjectName(container.GetUniqueName(MakeName(curve.name, m_curves.size() == 1)));
                added.emplace_back(polyline.get());
                polyline->Initialize();
                polyline.release();
            }
        } catch (...) {
            for (const QPointer<ZORGeoPolyline>& polyline : added)
                delete polyline.data();
            throw;
        }
    }

protected:
    /// Takes a curve; one that nobody could draw is left out.
    void Add(const QString& name, const ZORMathSetOfPoints& points)
    {
        if (points.size() < 2)
            ++m_numEmpty;
        else if (!std::all_of(points.begin(), points.end(), ZORGeoRange::Contains))
            ++m_numFar;
        else
            m_curves.push_back({name, points});
    }
    void NoteLosses()
    {
        if (m_numEmpty > 0)
            losses.append(
                ZORExcImport::tr("%n curve(s) with less than two points skipped", nullptr, m_numEmpty));
        if (m_numFar > 0)
            losses.append(ZORExcImport::tr("%n curve(s) beyond all measure skipped", nullptr, m_numFar));
    }

private:
    struct Curve
    {
        QString name;
        ZORMathSetOfPoints points;
    };
    std::vector<Curve> m_curves;
    int m_numEmpty = 0;
    int m_numFar = 0;
};

class ContoursContent final : public CurvesContent
{
public:
    using CurvesContent::CurvesContent;

    bool Read(QFileDevice& file, const std::function<bool(double)>& report) override
    {
        if (report && !report(0))
            return false;
        for (const ZORNestContour& contour : ZORNestContourReader::Read(file))
            Add(contour.name, contour.points);
        NoteLosses();
        return !report || report(1);
    }
};

/// The chains of a result's items.
class ResultContent final : public CurvesContent
{
public:
    using CurvesContent::CurvesContent;

    bool Read(QFileDevice& file, const std::function<bool(double)>& report) override
    {
        if (report && !report(0))
            return false;
        ZORNestResultReader reader(&file);
        const ZORNestResult result = reader.Read(nullptr);
        if (!result.IsValid())
            throw ZORSysFileException(reader.GetFailure());
        for (const ZORNestResultItem* item : result.GetItems()) {
            for (const ZORNestResultShape* shape : item->GetShapes())
                AddShape(item->GetName(), *shape);
            if (report && !report(0.9))
                return false;
        }
        if (m_numTexts > 0)
            losses.append(ZORExcImport::tr("%n text(s) skipped", nullptr, m_numTexts));
        NoteLosses();
        return !report || report(1);
    }

private:
    void AddShape(const QString& name, const ZORNestResultShape& shape)
    {
        constexpr double kTolerance = 0.01; // millimeters
        ZORMathSetOfPoints chain;
        for (const ZORNestResultSegment& segment : shape.GetSegments()) {
            if (segment.GetType() == ZORNestResultSegment::Text) {
                ++m_numTexts;
                continue;
            }
            const ZORMathSetOfPoints points = segment.GetPoints(kTolerance);
            const bool isJoined = !chain.isEmpty()
                                  && (points.constFirst() - chain.constLast()).GetLength()
                                         <= ZORNestResultSegment::joinTolerance;
            if (!isJoined && !chain.isEmpty()) {
                Add(name, chain);
                chain.clear();
            }
            for (qsizetype i = isJoined ? 1 : 0; i < points.size(); ++i)
                chain.append(points[i]);
        }
        if (!chain.isEmpty())
            Add(name, chain);
    }

    int m_numTexts = 0;
};

} // namespace

std::unique_ptr<Content> zor::exc::MakeContoursContent(const Source& source)
{
    return std::make_unique<ContoursContent>(source);
}

std::unique_ptr<Content> zor::exc::MakeResultContent(const Source& source)
{
    return std::make_unique<ResultContent>(source);
}
