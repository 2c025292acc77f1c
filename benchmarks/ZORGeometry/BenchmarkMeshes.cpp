#include "BenchmarkMeshes.h"

#include "GridTriangles.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <malloc.h>
#include <random>

double GetSheetHeight(double x, double y)
{
    return 40 * std::sin(x / 80) * std::cos(y / 110);
}

std::unique_ptr<ZORGeoSurface> MakeSheet(TriangleOrder order)
{
    constexpr int kCells = 707;
    constexpr double kWidth = 1000;
    QList<ZORMathPoint> vertices;
    for (int row = 0; row <= kCells; ++row) {
        for (int column = 0; column <= kCells; ++column) {
            const double x = kWidth * column / kCells;
            const double y = kWidth * row / kCells;
            vertices.append({x, y, GetSheetHeight(x, y)});
        }
    }
    QList<ZORGeoSurface::Corners> triangles = MakeGridTriangles(kCells);
    if (order == TriangleOrder::Shuffled)
        std::shuffle(triangles.begin(), triangles.end(), std::mt19937(1));
    return std::make_unique<ZORGeoSurface>(nullptr, vertices, triangles);
}

std::vector<ZORMathPoint> MakePointsOverSheet(double lower, double upper)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> across(0, 1000);
    std::uniform_real_distribution<double> height(lower, upper);
    std::vector<ZORMathPoint> points(100000);
    for (ZORMathPoint& point : points) {
        const double x = across(random);
        const double y = across(random);
        point = ZORMathPoint(x, y, GetSheetHeight(x, y) + height(random));
    }
    return points;
}

QString GetSheetFile(TriangleOrder order, ZORGeoStlWriter::FileFormats format)
{
    QString fileName = GetScratchFolder()
                       + QStringLiteral("/sheet_%1_%2.stl")
                             .arg(QString::number(int(order)),
                                  QLatin1String(format == ZORGeoStlWriter::Ascii ? "asc" : "bin"));
    if (!QFile::exists(fileName))
        ZORGeoStlWriter(fileName, MakeSheet(order).get(), format).Write(ZORSysValue::Millimeter);
    return fileName;
}

QString GetScratchFolder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

void ResetPeakMemory()
{
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

double GetPeakMemory()
{
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    const QByteArray status = file.readAll();
    const QByteArray peak = status.mid(status.indexOf("VmHWM:") + 6).trimmed();
    return peak.left(peak.indexOf(' ')).toDouble() / 1024;
}
