#include "ZORExcContent_p.h"

#include <ZORExchange/ZORExcImport.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFileDevice>

#include <optional>

namespace {

using zor::exc::Content;

class StlContent final : public Content
{
public:
    using Content::Content;

    bool Read(QFileDevice& file, const std::function<bool(double)>& report) override
    {
        ZORGeoStlLoader loader(&file);
        try {
            m_surfaces = loader.Read(GetSource().unit, report);
        } catch (const ZORSysFileException& exception) {
            // Content without a single facet is what the loader does not take for STL at all. Errors that are not about the
            // content, such as too little memory, name the file.
            if (file.error() != QFileDevice::NoError || loader.GetReport().GetNumFacets() > 0
                || exception.GetMessage().contains(file.fileName()))
                throw;
            throw ZORSysFileException(
                ZORExcImport::tr("it is not a container, STL, contour, layup or nesting result file"));
        }
        if (!m_surfaces)
            return false;
        for (int i = 0; i < m_surfaces->GetCount(); ++i)
            m_surfaces->SetName(i, MakeName(m_surfaces->GetName(i), m_surfaces->GetCount() == 1));
        NoteLosses(loader.GetReport());
        return true;
    }
    void AddTo(ZORFeatContainer& container) override { m_surfaces->AddTo(&container); }

private:
    void NoteLosses(const ZORGeoStlReport& report)
    {
        if (report.HasLosses())
            losses.append(report.ToString());
        if (report.GetNumEmptySolids() > 0)
            losses.append(ZORExcImport::tr("%n empty solid(s) skipped", nullptr, report.GetNumEmptySolids()));
    }

    std::optional<ZORGeoStlSurfaces> m_surfaces;
};

} // namespace

std::unique_ptr<Content> zor::exc::MakeStlContent(const Source& source)
{
    return std::make_unique<StlContent>(source);
}
