#include "support/ContainerFiles.h"

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QCryptographicHash>
#include <QSignalSpy>
#include <QtEndian>

#include <random>
#include <zstd.h>

namespace {

constexpr qsizetype kHeaderSize = 64;
constexpr qsizetype kCheckedHeader = 32;

void Damage(QByteArray& bytes, qsizetype from, std::mt19937& random)
{
    if (bytes.size() <= from)
        return;
    for (int flips = 1 + int(random() % 3); flips > 0; --flips)
        bytes[from + qsizetype(random() % size_t(bytes.size() - from))] = char(random());
}

/// Whether the load fails.
bool LoadDamagedFile(const QByteArray& file, const ContainerMaker& make)
{
    const std::unique_ptr<ZORGeoContainer> container = make();
    if (!LoadFailure(*container, file).isEmpty()) {
        EXPECT_EQ(container->GetNumGeometry(), 0);
        return true;
    }
    const std::unique_ptr<ZORGeoContainer> again = make();
    EXPECT_TRUE(RoundTrips(*container, *again));
    return false;
}

struct Observation
{
    bool hasChanged;
    bool isReported;
};

Observation Observe(const ZORGeoContainer& container, const std::function<void()>& call)
{
    const QByteArray before = SaveContainer(container);
    const QSignalSpy reports(&container, &ZORGeoContainer::ContentChanged);
    call();
    return {SaveContainer(container) != before, !reports.isEmpty()};
}

} // namespace

testing::AssertionResult ReportsChange(const ZORGeoContainer& container, const std::function<void()>& change)
{
    const Observation seen = Observe(container, change);
    if (!seen.hasChanged)
        return testing::AssertionFailure() << "the file would stay as it was";
    return seen.isReported ? testing::AssertionSuccess() : testing::AssertionFailure() << "not reported";
}

testing::AssertionResult ReportsNoChange(const ZORGeoContainer& container, const std::function<void()>& call)
{
    const Observation seen = Observe(container, call);
    if (seen.hasChanged)
        return testing::AssertionFailure() << "the file would change";
    return seen.isReported ? testing::AssertionFailure() << "reported" : testing::AssertionSuccess();
}

QString LoadFailure(ZORGeoContainer& container, const QByteArray& file)
{
    try {
        LoadContainer(container, file);
    } catch (const ZORSysFileException& exception) {
        return exception.GetMessage();
    }
    return {};
}

testing::AssertionResult RoundTrips(const ZORGeoContainer& container, ZORGeoContainer& loaded)
{
    const QByteArray file = SaveContainer(container);
    LoadContainer(loaded, file);
    if (loaded.GetNumGeometry() != container.GetNumGeometry())
        return testing::AssertionFailure() << loaded.GetNumGeometry() << " objects were loaded";
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        const ZORGeoGeometry& a = *container.GetGeometryByIndex(i);
        const ZORGeoGeometry& b = *loaded.GetGeometryByIndex(i);
        if (a.metaObject() != b.metaObject() || a.objectName() != b.objectName()
            || a.GetReferenceCount() != b.GetReferenceCount()) {
            return testing::AssertionFailure()
                   << "object " << i << " is a " << b.metaObject()->className() << ' '
                   << testing::PrintToString(b.objectName()) << " with " << b.GetReferenceCount()
                   << " references, not a " << a.metaObject()->className() << ' '
                   << testing::PrintToString(a.objectName()) << " with " << a.GetReferenceCount();
        }
    }
    if (SaveContainer(loaded) != file)
        return testing::AssertionFailure() << "another save gives other bytes";
    return testing::AssertionSuccess();
}

QByteArray OpenContainerFile(const QByteArray& file)
{
    QByteArray content = file.sliced(kHeaderSize);
    if (qFromLittleEndian<quint32>(file.constData() + 12) == 0)
        return content;
    QByteArray document(qFromLittleEndian<qint64>(file.constData() + 16), Qt::Uninitialized);
    const size_t size = ZSTD_decompress(document.data(), size_t(document.size()), content.constData(),
                                        size_t(content.size()));
    EXPECT_EQ(size, size_t(document.size()));
    return document;
}

QByteArray SealContainerFile(const QByteArray& document)
{
    QByteArray file("\x89ZOR\r\n\x1a\n", 8);
    const auto put = [&file](auto value) {
        value = qToLittleEndian(value);
        file.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    put(quint32(1));
    put(quint32(0));
    put(quint64(document.size()));
    put(quint64(document.size()));
    file.append(kHeaderSize - kCheckedHeader, '\0');
    return ResealContainerFile(file + document);
}

QByteArray ResealContainerFile(QByteArray file)
{
    const QByteArray checked = file.first(kCheckedHeader) + file.sliced(kHeaderSize);
    return file.replace(kCheckedHeader, kHeaderSize - kCheckedHeader,
                        QCryptographicHash::hash(checked, QCryptographicHash::Blake2b_256));
}

int LoadDamagedFiles(const QByteArray& file, const ContainerMaker& make, int count, unsigned seed)
{
    const QByteArray document = OpenContainerFile(file);
    std::mt19937 random(seed);
    int failed = 0;
    for (int i = 0; i < count && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE(i);
        QByteArray damaged = i % 4 == 3 ? file : document;
        Damage(damaged, i % 4 == 3 ? kHeaderSize : 0, random);
        failed +=
            LoadDamagedFile(i % 4 == 3 ? ResealContainerFile(damaged) : SealContainerFile(damaged), make);
    }
    return failed;
}
