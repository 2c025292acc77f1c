#include "Writers.h"

#include "support/MessageOf.h"

#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompWriter.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORGeometry/ZORGeoStlWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QBuffer>
#include <QImage>

#include <array>
#include <memory>
#include <random>

namespace {

/// One of everything for both contents. Its numbers are random, so that nothing can be compressed.
class Contents
{
public:
    Contents()
    {
        for (const int content : {Writer::Small, Writer::Large}) {
            const int size = content == Writer::Small ? 1 : 20;
            Fill(m_container[content], 20 * size);
            m_surface[content] = MakeSurface(12 * size);
            m_result[content] = MakeResult(15 * size);
            m_picture[content] = MakePicture(6 * size);
            FillLibrary(m_library[content], 2 * size);
            m_text[content] = MakeText(1000 * size);
        }
    }

    const ZORGeoContainer& GetContainer(Writer::Content content) const { return m_container[content]; }
    const ZORGeoSurface& GetSurface(Writer::Content content) const { return *m_surface[content]; }
    const ZORNestResult& GetResult(Writer::Content content) const { return m_result[content]; }
    const QByteArray& GetPicture(Writer::Content content) const { return m_picture[content]; }
    const QByteArray& GetText(Writer::Content content) const { return m_text[content]; }
    const ZORCompRoot* GetRoot(Writer::Content content)
    {
        return qobject_cast<ZORCompRoot*>(
            m_library[content].GetFeatureRoot(ZORCompRoot::staticMetaObject.className()));
    }

private:
    ZORMathPoint MakePoint()
    {
        return {m_coordinate(m_random), m_coordinate(m_random), m_coordinate(m_random)};
    }
    void Fill(ZORGeoContainer& container, int points);
    std::unique_ptr<ZORGeoSurface> MakeSurface(int triangles);
    ZORNestResult MakeResult(int segments);
    QByteArray MakePicture(int pixels);
    void FillLibrary(ZORFeatContainer& container, int materials);
    QByteArray MakeText(int size);

    std::mt19937 m_random{7};
    std::uniform_real_distribution<double> m_coordinate{-1000, 1000};
    std::array<ZORGeoContainer, 2> m_container;
    std::array<std::unique_ptr<ZORGeoSurface>, 2> m_surface;
    std::array<ZORNestResult, 2> m_result;
    std::array<QByteArray, 2> m_picture;
    std::array<QByteArray, 2> m_text;
    std::array<ZORFeatContainer, 2> m_library;
};

void Contents::Fill(ZORGeoContainer& container, int points)
{
    for (int i = 0; i < points; ++i)
        (new ZORGeoCartesianPoint(&container, MakePoint()))->Initialize();
}

std::unique_ptr<ZORGeoSurface> Contents::MakeSurface(int triangles)
{
    QList<ZORMathPoint> vertices;
    QList<ZORGeoSurface::Corners> corners;
    for (int i = 0; i < triangles; ++i) {
        for (int k = 0; k < 3; ++k)
            vertices.append(MakePoint());
        corners.append({3 * i, 3 * i + 1, 3 * i + 2});
    }
    return std::make_unique<ZORGeoSurface>(nullptr, vertices, corners);
}

ZORNestResult Contents::MakeResult(int segments)
{
    QList<ZORNestResultSegment> outline;
    for (int i = 0; i < segments; ++i)
        outline.append(ZORNestResultSegment::CreateLine(MakePoint(), MakePoint()));
    ZORNestResultItem item;
    item.AddShape(ZORNestResultShape(outline));
    ZORNestResult result(ZORNestResult::Nesting);
    result.AddItem(item);
    return result;
}

QByteArray Contents::MakePicture(int pixels)
{
    QImage image(pixels, pixels, QImage::Format_RGB32);
    for (int i = 0; i < pixels * pixels; ++i)
        image.setPixel(i % pixels, i / pixels, 0xff000000 | m_random());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

void Contents::FillLibrary(ZORFeatContainer& container, int materials)
{
    auto* const root =
        qobject_cast<ZORCompRoot*>(container.GetFeatureRoot(ZORCompRoot::staticMetaObject.className()));
    ZORCompMaterialLibrary* const library = ZORCompMaterialLibrary::Of(root);
    for (int i = 0; i < materials; ++i) {
        auto* const material = new ZORCompMaterial(library);
        material->SetLabel(QString::fromLatin1(MakeText(500)) + QString::number(i));
        material->Initialize();
    }
}

QByteArray Contents::MakeText(int size)
{
    QByteArray text;
    while (text.size() < size)
        text += QByteArray::number(m_random(), 16);
    return text;
}

Contents& GetContents()
{
    static Contents contents;
    return contents;
}

QString WriteContainer(const QString& path, Writer::Content content)
{
    return MessageOf([&] {
        ZORSysReplacedFile file(path);
        file.Open();
        GetContents().GetContainer(content).Save(file.GetDevice());
        if (!file.Commit())
            throw ZORSysFileException(file.GetErrorString());
    });
}

QString WriteStl(const QString& path, Writer::Content content, ZORGeoStlWriter::FileFormats format)
{
    QString name = path;
    return MessageOf([&] {
        const ZORSysValue::Unit unit = ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).constFirst();
        ZORGeoStlWriter(name, &GetContents().GetSurface(content), format).Write(unit);
    });
}

QString WriteResult(const QString& path, Writer::Content content)
{
    ZORNestResultWriter writer(path);
    const bool isWritten = writer.Write(GetContents().GetResult(content)) > 0;
    return isWritten ? QString() : writer.GetFailure();
}

QString WriteLayup(const QString& path, Writer::Content content)
{
    return MessageOf([&] {
        ZORCompWriter(path, ZORCompWriter::GetSupportedFormats()[0]).Write(GetContents().GetRoot(content));
    });
}

QString lastWarning; // of the log, while a load dump is written

/// The dump is a by-product of loading, and its error a warning.
QString WriteLoadDump(const QString& path, Writer::Content content)
{
    QBuffer file;
    file.open(QIODevice::ReadWrite);
    GetContents().GetContainer(content).Save(file);
    file.seek(0);
    ZORGeoDebugOptions& options = *ZORGeoDebugOptions::GetInstance();
    options.SetContainerLoadDumpEnabled(true);
    options.SetContainerLoadDumpFile(path);
    lastWarning.clear();
    const auto former = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { lastWarning = message; });
    ZORGeoContainer loaded;
    loaded.Load(file);
    qInstallMessageHandler(former);
    options.SetContainerLoadDumpEnabled(false);
    return lastWarning;
}

} // namespace

const std::vector<Writer>& GetWriters()
{
    using Content = Writer::Content;
    static const std::vector<Writer> writers = {
        {"Container", WriteContainer},
        {"BinaryStl", [](const QString& path,
                         Content content) { return WriteStl(path, content, ZORGeoStlWriter::Binary); }},
        {"AsciiStl", [](const QString& path,
                        Content content) { return WriteStl(path, content, ZORGeoStlWriter::Ascii); }},
        {"Result", WriteResult},
        {"Layup", WriteLayup},
        {"Picture",
         [](const QString& path, Content content) {
             return ZORSysReplacedFile::Replace(path, GetContents().GetPicture(content));
         }},
        {"Report",
         [](const QString& path, Content content) {
             return ZORSysReplacedFile::Replace(path, GetContents().GetText(content));
         }},
        {"LoadDump", WriteLoadDump},
    };
    return writers;
}
