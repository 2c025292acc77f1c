#include "ZORExcContent_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoContainerFile.h>

#include <QFileDevice>

#include <optional>

namespace {

using zor::exc::Content;

class ContainerContent final : public Content
{
public:
    using Content::Content;

    bool Read(QFileDevice& file, const std::function<bool(double)>& report) override
    {
        m_file = ZORGeoContainerFile::Read(file, report);
        return m_file.has_value();
    }
    void AddTo(ZORFeatContainer& container) override { m_file->AddTo(container); }

private:
    std::optional<ZORGeoContainerFile> m_file;
};

} // namespace

std::unique_ptr<Content> zor::exc::MakeContainerContent(const Source& source)
{
    return std::make_unique<ContainerContent>(source);
}
