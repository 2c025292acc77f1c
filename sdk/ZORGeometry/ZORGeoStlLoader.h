// Reader of STL files.

#pragma once

#include <ZORGeometry/ZORGeoStlReport.h>
#include <ZORGeometry/ZORGeoStlSurfaces.h>
#include <ZORSystem/ZORSysValue.h>

#include <QCoreApplication>
#include <QList>

#include <functional>
#include <memory>
#include <optional>

class QIODevice;
class ZORGeoContainer;
class ZORGeoSurface;

namespace zor::geo {
class ProgressReporter;
}

/// Reads triangulated surfaces from binary and ASCII STL.
///
/// Form.        Told by the content, never by the word "solid": binary files may begin with it. ASCII is read
///              in any case and spacing, with UTF-8 byte order mark, and with missing `facet` or `endfacet`.
/// Surfaces.    A binary file gives one; every `solid` of an ASCII file gives one, named after the
///              solid where it has a name (made unique in the container). Solids without
///              triangles and empty files give none.
///
/// Vertices.    Corners with the same three floats become one vertex (-0 equals +0), within each solid;
///              vertices are numbered by their first appearance.
/// Triangles.   In the order of the file. Facets that cannot be used are left out, counted in GetReport() and
///              logged as one warning of category "zor.geometry". Thin triangles without area stay: they
///              carry the connection between their neighbours.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoStlLoader
{
    Q_DECLARE_TR_FUNCTIONS(ZORGeoStlLoader)

public:
    /// \param device  open for reading, at the start of the STL content; not owned, must outlive the loader.
    ///                Sequential devices are read to their end, waiting for data.
    explicit ZORGeoStlLoader(QIODevice* device);
    ~ZORGeoStlLoader();

    /// Reads the device from its position to its end, and registers the surfaces with \a container. Either
    /// all surfaces are added or, when an exception is thrown, none.
    ///
    /// What was left out of a file is passed on by ZORSysFileNotices.
    ///
    /// Linear time; sequential devices are read at once, others piece by piece. A file that another program shortens
    /// meanwhile counts as one that was cut short.
    /// \param unit  the unit of the coordinates in the file; the surfaces are in millimetres
    /// \return the surfaces in the order of the file, owned by the container
    /// \throws ZORSysException "container is null", "unit is no unit of length"
    /// \throws ZORSysFileException "device is not open for reading", "cannot read the STL content: %1",
    ///         "the STL content is UTF-16 text, which the format does not allow",
    ///         "the STL content is another kind of file: its header announces %1 facets, its size allows %2, and %3 of
    ///         them are not finite or out of range" for binary content whose header announces over twice or under half
    ///         of the facets that it has, most of them with coordinates that single precision cannot compute with
    ///         "the STL content has no usable facet (%1)"
    ///         where %1 says why
    QList<const ZORGeoSurface*> Load(ZORGeoContainer* container, ZORSysValue::Unit unit);

    /// Reads the device from its position to its end without a container: the first half of Load(), which takes nearly all
    /// of its time. May be called in any thread; ZORGeoStlSurfaces::AddTo() is the other half.
    /// \param unit    the unit of the coordinates in the file; the surfaces are in millimeters
    /// \param report  called in the same thread: with 0, then typically every 10 ms with the part that is done, never
    ///                less than before, at last with 1; returns false to cancel. What it throws passes through. An empty
    ///                function reports nothing
    /// \return nothing when canceled, typically within 0.1 s; up to 0.1 us a triangle while their neighbors are found
    /// \throws ZORSysException, ZORSysFileException as Load()
    std::optional<ZORGeoStlSurfaces> Read(ZORSysValue::Unit unit,
                                          const std::function<bool(double)>& report = {});

    /// The counts of the last Load() or Read(), also of one that threw.
    const ZORGeoStlReport& GetReport() const;

private:
    static void CheckUnit(ZORSysValue::Unit unit);
    ZORGeoStlSurfaces Run(ZORSysValue::Unit unit, zor::geo::ProgressReporter& progress);

    class Private;
    const std::unique_ptr<Private> d;
};
