#include "ZORExcContent_p.h"

#include <ZORExchange/ZORExcImport.h>
#include <ZORSystem/ZORSysFileException.h>

#include <utility>

namespace zor::exc {

Content::Content(Source source)
    : m_source(std::move(source))
{
}

Content::~Content() = default;

QString Content::MakeName(const QString& part, bool isOnly) const
{
    return isOnly || part.isEmpty() ? m_source.name : m_source.name + u'/' + part;
}

std::unique_ptr<Content> MakeContent(ZORExcFileKind::Kind kind, const Source& source)
{
    using ZORExcFileKind::Kind;
    switch (kind) {
    case Kind::Empty:
        throw ZORSysFileException(ZORExcImport::tr("the file is empty"));
    case Kind::Container:
        return MakeContainerContent(source);
    case Kind::Result:
        return MakeResultContent(source);
    case Kind::Contours:
        return MakeContoursContent(source);
    case Kind::LayupXml:
        return MakeLayupContent(source, "layup-xml");
    case Kind::LayupJson:
        return MakeLayupContent(source, "compost-json");
    case Kind::Stl:
        break;
    }
    return MakeStlContent(source);
}

} // namespace zor::exc
