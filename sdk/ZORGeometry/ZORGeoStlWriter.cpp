#include "ZORGeoStlWriter.h"

#include "storage/ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QElapsedTimer>
#include <QFileDevice>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QtEndian>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

namespace {

struct FloatPoint
{
    float x = 0;
    float y = 0;
    float z = 0;
};

// Adding zero turns -0 into 0.
FloatPoint ToFloats(double x, double y, double z)
{
    return {float(x) + 0.0f, float(y) + 0.0f, float(z) + 0.0f};
}

// Formats facets into one buffer that goes to the device whenever it is full.
class FacetStream
{
public:
    FacetStream(QFileDevice& device, bool binary)
        : m_device(device)
        , m_isBinary(binary)
        , m_buffer(kBufferSize)
    {
    }

    void Begin(const QByteArray& name, int facets)
    {
        if (m_isBinary) {
            QByteArray header = QByteArrayLiteral("binary STL").leftJustified(80, ' ');
            Append(header.constData(), size_t(header.size()));
            const quint32 count = qToLittleEndian(quint32(facets));
            Append(reinterpret_cast<const char*>(&count), sizeof count);
        } else {
            Append("solid ");
            Append(name.constData(), size_t(name.size()));
            Append("\n");
        }
    }

    void AddFacet(const FloatPoint& normal, const FloatPoint& a, const FloatPoint& b, const FloatPoint& c)
    {
        if (m_used + kLongestFacet > kBufferSize)
            Flush();
        if (m_isBinary) {
            for (const FloatPoint& point : {normal, a, b, c})
                AppendBinary(point);
            Append("\0", 2);
            return;
        }
        Append("  facet normal");
        AppendText(normal);
        Append("\n    outer loop\n");
        for (const FloatPoint& point : {a, b, c}) {
            Append("      vertex");
            AppendText(point);
            Append("\n");
        }
        Append("    endloop\n  endfacet\n");
    }

    bool End(const QByteArray& name)
    {
        if (!m_isBinary) {
            Append("endsolid ");
            Append(name.constData(), size_t(name.size()));
            Append("\n");
        }
        Flush();
        return m_isGood;
    }

private:
    static constexpr size_t kBufferSize = size_t(1) << 20;
    static constexpr size_t kLongestFacet = 2048; // or name

    void Append(const char* text, size_t size)
    {
        std::memcpy(m_buffer.data() + m_used, text, size);
        m_used += size;
    }
    template<size_t N>
    void Append(const char (&text)[N])
    {
        Append(text, N - 1);
    }
    void AppendBinary(const FloatPoint& point)
    {
        for (const float value : {point.x, point.y, point.z}) {
            const quint32 bits = qToLittleEndian(std::bit_cast<quint32>(value));
            Append(reinterpret_cast<const char*>(&bits), sizeof bits);
        }
    }
    void AppendText(const FloatPoint& point)
    {
        for (const float value : {point.x, point.y, point.z}) {
            m_buffer[m_used++] = ' ';
            char* const begin = m_buffer.data() + m_used;
            m_used += size_t(std::to_chars(begin, begin + 32, value).ptr - begin);
        }
    }
    void Flush()
    {
        m_isGood = m_isGood && m_device.write(m_buffer.data(), qint64(m_used)) == qint64(m_used);
        m_used = 0;
    }

    QFileDevice& m_device;
    const bool m_isBinary;
    std::vector<char> m_buffer;
    size_t m_used = 0;
    bool m_isGood = true;
};

std::vector<FloatPoint> ToFile(const QList<ZORMathPoint>& vertices, double factor)
{
    std::vector<FloatPoint> points;
    points.reserve(size_t(vertices.size()));
    for (const ZORMathPoint& v : vertices) {
        points.push_back(ToFloats(v.GetX() / factor, v.GetY() / factor, v.GetZ() / factor));
        const FloatPoint& p = points.back();
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            throw ZORSysException(
                ZORGeoStlWriter::tr("vertex %1 is too large for an STL file").arg(points.size() - 1));
    }
    return points;
}

bool WriteFacets(QFileDevice& device, const ZORGeoSurface& surface, const std::vector<FloatPoint>& points,
                 bool binary)
{
    const QByteArray name = surface.objectName().simplified().left(200).toUtf8();
    const QList<ZORMathPoint>& vertices = surface.GetVertexArray();
    FacetStream stream(device, binary);
    stream.Begin(name, surface.GetNumTriangles());
    for (const auto [a, b, c] : surface.GetCornerArray()) {
        const ZORMathVector normal =
            Cross(vertices[b] - vertices[a], vertices[c] - vertices[a]).GetNormalized();
        stream.AddFacet(ToFloats(normal.GetX(), normal.GetY(), normal.GetZ()), points[size_t(a)],
                        points[size_t(b)], points[size_t(c)]);
    }
    return stream.End(name);
}

} // namespace

class ZORGeoStlWriter::Private
{
public:
    QString fileName;
    QPointer<const ZORGeoSurface> surface; // not owned
    FileFormats format;
};

ZORGeoStlWriter::ZORGeoStlWriter(QString& fileName, const ZORGeoSurface* surface, FileFormats format)
    : d(new Private{fileName, surface, format})
{
    ZOR_TRACE_CALL(fileName, surface, format);
}

ZORGeoStlWriter::~ZORGeoStlWriter() = default;

int ZORGeoStlWriter::Write(ZORSysValue::Unit unit)
{
    ZOR_TRACE_CALL(unit);
    if (!d->surface)
        throw ZORSysException(tr("surface is null"));
    if (!ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).contains(unit))
        throw ZORSysException(tr("unit is no unit of length"));
    if (d->fileName.isEmpty())
        throw ZORSysFileOpenException(d->fileName, tr("no file name"));
    QElapsedTimer timer;
    timer.start();
    const std::vector<FloatPoint> points =
        ToFile(d->surface->GetVertexArray(), ZORSysValue::GetUnitFactor(unit));

    ZORSysReplacedFile file(d->fileName);
    file.Open();
    if (!WriteFacets(file.GetDevice(), *d->surface, points, d->format != Ascii) || !file.Commit()) {
        throw ZORSysFileException(tr("cannot write file '%1': %2").arg(d->fileName, file.GetErrorString()));
    }
    qCInfo(ZorGeometryLog).noquote() << tr("Exported '%1': %n triangle(s), %2 in %3 s", nullptr,
                                           d->surface->GetNumTriangles())
                                            .arg(d->fileName,
                                                 QLocale::c().formattedDataSize(QFileInfo(d->fileName).size(),
                                                                                1, QLocale::DataSizeSIFormat),
                                                 QString::number(double(timer.elapsed()) / 1000, 'f', 2));
    return d->surface->GetNumTriangles();
}
