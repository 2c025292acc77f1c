#include "ZORExcImport.h"

#include "formats/ZORExcContent_p.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysFileNotices.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QDir>
#include <QFileInfo>
#include <QPointer>

using ZORExcFileKind::Kind;

namespace {

/// Returns the message with the name of the file, which some of them have already.
QString AddName(const QString& message, const QString& name)
{
    return message.contains(name) ? message : ZORExcImport::tr("cannot read '%1': %2").arg(name, message);
}

/// Calls \a function; its exceptions name the file.
template<class Function>
decltype(auto) Named(const QString& name, const Function& function)
{
    try {
        return ZORSysMemory::Read(name, 0, function);
    } catch (const ZORSysFileOpenException&) {
        throw;
    } catch (const ZORSysException& exception) {
        throw ZORSysFileException(AddName(exception.GetMessage(), name));
    }
}

/// Collects what joins a container, in its order.
class Collector
{
public:
    explicit Collector(ZORFeatContainer& container)
        : m_connection(QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &container,
                                        [this](ZORGeoGeometry* geometry) { m_added.append(geometry); }))
    {
    }
    ~Collector() { QObject::disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(Collector)

    QList<ZORGeoGeometry*> GetAdded() const
    {
        QList<ZORGeoGeometry*> added;
        for (const QPointer<ZORGeoGeometry>& geometry : m_added) {
            if (geometry)
                added.append(geometry);
        }
        return added;
    }

private:
    QList<QPointer<ZORGeoGeometry>> m_added;
    const QMetaObject::Connection m_connection;
};

} // namespace

class ZORExcImport::Private
{
public:
    QString path;
    QString name; // as people see it
    ZORSysValue::Unit unit = ZORSysValue::Millimeter;
    Kind kind = Kind::Empty;
    qint64 size = 0;
    std::unique_ptr<zor::exc::Content> content;
    QStringList losses;
};

ZORExcImport::ZORExcImport(const QString& fileName)
    : d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(fileName);
    d->path = fileName;
    d->name = QDir::toNativeSeparators(fileName);
}

ZORExcImport::~ZORExcImport() = default;

void ZORExcImport::SetUnit(ZORSysValue::Unit unit)
{
    ZOR_TRACE_CALL(unit);
    if (!ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).contains(unit))
        throw ZORSysException(tr("unit is no unit of length"));
    d->unit = unit;
}

bool ZORExcImport::Prepare(const std::function<bool(double)>& report)
{
    ZOR_TRACE_CALL();
    d->content.reset();
    d->losses.clear();
    return Named(d->name, [&] {
        ZORSysFile file(d->path);
        if (!file.open(QIODevice::ReadOnly))
            throw ZORSysFileOpenException(d->name, file.errorString());
        d->size = file.size();
        d->kind = ZORExcFileKind::Recognize(file);
        d->content =
            zor::exc::MakeContent(d->kind, {d->path, QFileInfo(d->path).completeBaseName(), d->unit});
        if (d->content->Read(file, report))
            return true;
        d->content.reset();
        return false;
    });
}

Kind ZORExcImport::GetKind() const
{
    return d->kind;
}

qint64 ZORExcImport::GetFileSize() const
{
    return d->size;
}

QList<ZORGeoGeometry*> ZORExcImport::Commit(ZORFeatContainer* container)
{
    ZOR_TRACE_CALL(container);
    if (!container)
        throw ZORSysException(tr("container is null"));
    if (!d->content)
        throw ZORSysException(tr("nothing was prepared"));
    const std::unique_ptr<zor::exc::Content> content = std::move(d->content);
    return Named(d->name, [&] {
        const Collector collector(*container);
        content->AddTo(*container);
        d->losses = content->losses;
        if (!content->isReported)
            ZORSysFileNotices::GetInstance()->Report(d->name, d->losses);
        return collector.GetAdded();
    });
}

QStringList ZORExcImport::GetLosses() const
{
    return d->content ? d->content->losses : d->losses;
}
