// Large surfaces for the benchmarks.

#pragma once

#include <ZORGeometry/ZORGeoStlWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QTemporaryDir>

#include <memory>
#include <vector>

enum class TriangleOrder {
    Rows,     // as a mesh generator writes them
    Shuffled, // at random
};

/// A wavy sheet of 2 * 707 * 707 = 999698 triangles, 1000 mm wide, which belongs to no container.
std::unique_ptr<ZORGeoSurface> MakeSheet(TriangleOrder order);

/// z of the sheet.
double GetSheetHeight(double x, double y);

/// 100000 points, at random between two heights over the sheet.
std::vector<ZORMathPoint> MakePointsOverSheet(double lower, double upper);

/// Path of the sheet as an STL file, written on first use into a folder that lasts as long as the process.
QString GetSheetFile(TriangleOrder order, ZORGeoStlWriter::FileFormats format);

/// Folder for what benchmarks write; removed at the end of the process.
QString GetScratchFolder();

/// Forgets the peak of the process's memory, so that GetPeakMemory() tells of what follows.
void ResetPeakMemory();
/// MiB of memory that the process held at most since the reset, code and mapped files included.
double GetPeakMemory();
