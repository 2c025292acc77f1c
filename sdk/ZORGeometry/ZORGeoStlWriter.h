// Writer of STL files.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>
#include <ZORSystem/ZORSysValue.h>

#include <QCoreApplication>
#include <QString>

#include <memory>

class ZORGeoSurface;

/// Writes one surface as an STL file.
///
/// Facets come in the order of the triangles, with normals computed from the corners (0 0 0 where a triangle
/// has no area). Coordinates are rounded to floats; ASCII files hold the shortest decimals that read back as
/// the same floats, and name the solid after the surface.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORGEOMETRY_EXPORT ZORGeoStlWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoStlWriter)

public:
    /// The codes are stored in settings.
    enum FileFormats : int {
        Ascii = 0,
        Binary = 1,
    };

    /// \param fileName  where to write; taken as it is and not changed
    /// \param surface   not owned; must live until Write()
    ZORGeoStlWriter(QString& fileName, const ZORGeoSurface* surface, FileFormats format);
    ~ZORGeoStlWriter();

    /// Writes the file beside its final place and moves it there when it is complete: on failure a former
    /// file of that name is as it was. Devices and pipes are written directly.
    /// \param unit  the unit of the coordinates in the file
    /// \return the number of facets written
    /// \throws ZORSysException "surface is null", "unit is no unit of length", "vertex %1 is too large for an
    ///         STL file", counted from 0
    /// \throws ZORSysFileOpenException when the file cannot be created
    /// \throws ZORSysFileException "cannot write file '%1': %2"
    int Write(ZORSysValue::Unit unit);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
