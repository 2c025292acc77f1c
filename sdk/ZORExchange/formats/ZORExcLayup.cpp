#include "ZORExcContent_p.h"

#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORComposites/ZORCompReader.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORExchange/ZORExcImport.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QFileDevice>

namespace {

using zor::exc::Content;
using zor::exc::Source;

class LayupContent final : public Content
{
public:
    LayupContent(const Source& source, const char* format)
        : Content(source)
        , m_format(format)
    {
    }

    bool Read(QFileDevice&, const std::function<bool(double)>& report) override
    {
        if (report && !report(0))
            return false;
        m_document = ZORCompReader(GetSource().path, m_format).Parse(m_report);
        for (ZORCompDocument::Layup& layup : m_document.layups) {
            if (layup.name.isEmpty())
                layup.name = GetSource().name;
        }
        return !report || report(1);
    }
    void AddTo(ZORFeatContainer& container) override
    {
        const char* const rootClass = ZORCompRoot::staticMetaObject.className();
        const int before = container.GetNumGeometry();
        auto* const root = qobject_cast<ZORCompRoot*>(container.GetFeatureRoot(rootClass));
        const bool isNew = container.GetNumGeometry() > before;
        try {
            ZORCompReadProcessor processor(root, false);
            processor.Add(m_document, GetSource().path, m_report);
            processor.Finalize();
            losses = processor.GetReport().warnings;
            isReported = true;
        } catch (...) {
            if (isNew)
                delete root;
            throw;
        }
    }

private:
    const QByteArray m_format;
    ZORCompDocument m_document;
    ZORCompReadReport m_report;
};

} // namespace

std::unique_ptr<Content> zor::exc::MakeLayupContent(const Source& source, const char* format)
{
    return std::make_unique<LayupContent>(source, format);
}
